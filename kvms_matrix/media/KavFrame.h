#pragma once

/*
 * The Kav frame: the envelope every compressed media frame travels in on its way to
 * a decoder. Layout on the wire, all integers big-endian:
 *
 *   "kav" | type (1) | payload size (4) | timestamp (8) | extension length (1)
 *   | extension blocks (0, 6 or 15 bytes) | payload
 *
 * Extension blocks are tag, body length, body: 0x10 describes the video stream
 * (codec, frame rate x 100, width, height), 0x11 carries four opaque audio bytes.
 *
 * The functions work on caller-owned memory only: no allocation, no locks. Every
 * failure returns -1. They are exported from the module with C linkage so other
 * components of the host can use the same envelope.
 */

#include <stdint.h>

#if defined(_WIN32)
#define KAV_API __declspec(dllexport)
#else
#define KAV_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Frame type codes (only the low byte of KavFrame.type is sent). */
enum {
    KAV_TYPE_AUDIO = 0xF9, /* carries the audio block; 23-byte header */
    KAV_TYPE_KEY = 0xFA, /* key frame or still picture, video and audio blocks; 32-byte header */
    KAV_TYPE_VIDEO = 0xFB, /* other video frames, no blocks; 17-byte header */
    KAV_TYPE_PLAIN = 0xFC /* treated like KAV_TYPE_VIDEO */
};

/* KavStreamInfo.flags */
enum {
    KAV_STREAM_VIDEO = 1, /* videoCodec, frame rate, width and height are valid */
    KAV_STREAM_AUDIO = 2 /* the four audio bytes are valid */
};

enum { KAV_FIXED_HEADER_SIZE = 17 };

typedef struct KavFrame {
    uint32_t type; /* frame type code; see KAV_TYPE_* */
    const unsigned char* data; /* payload; after unpacking it points into the input */
    uint32_t size; /* payload length in bytes */
    uint64_t timestamp; /* presentation time, carried as is */
} KavFrame;

typedef struct KavStreamInfo {
    uint32_t flags; /* KAV_STREAM_* bits */
    uint32_t videoCodec; /* low byte sent */
    uint32_t frameRateNum;
    uint32_t frameRateDen; /* unpacking always yields a denominator of 1000 */
    uint16_t width;
    uint16_t height;
    uint32_t audioA; /* the audio bytes are opaque; low byte sent */
    uint32_t audioB;
    uint32_t audioC;
    uint32_t audioD;
} KavStreamInfo;

/* Header size of a type (fixed header plus blocks): 23, 32, 17, 17 for 249 to 252,
 * -1 for any other value. */
KAV_API int KavCalcFrameHeaderSize(unsigned int type);

/* Header size plus payloadSize; -1 for an unknown type or when the sum exceeds INT_MAX. */
KAV_API int KavCalcFrameSize(unsigned int type, unsigned int payloadSize);

/* Writes fixed header and extension blocks to out; returns the header length or -1.
 * Type 250 needs both KAV_STREAM_VIDEO and KAV_STREAM_AUDIO in info->flags, type 249
 * needs KAV_STREAM_AUDIO. A type without a known header size gets a bare 17-byte
 * header; outCapacity is then NOT checked, the caller must provide 17 bytes.
 * On failure the content of out is undefined. */
KAV_API int KavPackFrameHeader(const KavFrame* frame, const KavStreamInfo* info, unsigned char* out, int outCapacity);

/* Writes header and payload (copied once) to out; returns the total length or -1.
 * For a type without a known header size outCapacity is NOT checked: the caller must
 * provide 17 + frame->size bytes. */
KAV_API int KavPackFrame(const KavFrame* frame, const KavStreamInfo* info, unsigned char* out, int outCapacity);

/* Parses an envelope; returns the payload size or -1. frame->data points into in
 * (nothing is copied). Only 17 + payload size bytes are required of inLength: the
 * extension length is not counted, so for a truncated input the payload may reach
 * up to extension-length bytes past in + inLength. Extension blocks are only read
 * where they lie inside inLength. An unknown block tag prints "Unknown type" on
 * standard output and is skipped by its length byte. On failure frame and info may
 * be partly filled. */
KAV_API int KavUnpackFrame(const unsigned char* in, int inLength, KavFrame* frame, KavStreamInfo* info);

#ifdef __cplusplus
} /* extern "C" */
#endif
