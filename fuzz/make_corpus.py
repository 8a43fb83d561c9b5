#!/usr/bin/env python3
"""Writes the seed inputs under fuzz/corpus/: a few well-formed Kav frames and wire
messages, so the fuzzers start from the interesting shapes instead of from nothing."""

import os
import struct

HERE = os.path.dirname(os.path.abspath(__file__))


def write(target, name, data):
    folder = os.path.join(HERE, "corpus", target)
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, name), "wb") as f:
        f.write(data)


def kav(frame_type, payload, blocks=b"", timestamp=0x0102030405060708):
    return b"kav" + struct.pack(">BIQB", frame_type, len(payload), timestamp, len(blocks)) + blocks + payload


def video(codec=1, rate100=2500, width=1920, height=1080):
    return struct.pack(">BBBHHH", 0x10, 7, codec, rate100, width, height)


def audio(a=0, b=0, c=0, d=0):
    return bytes([0x11, 4, b, d, a, c])


def kav_corpus():
    payload = bytes((i * 7 + 3) & 0xFF for i in range(64))
    write("fuzz_kav_unpack", "key_frame", kav(0xFA, payload, video() + audio()))
    write("fuzz_kav_unpack", "key_frame_2997", kav(0xFA, payload, video(2, 2997, 704, 576) + audio(1, 2, 3, 4)))
    write("fuzz_kav_unpack", "audio_frame", kav(0xF9, payload[:16], audio(9, 8, 7, 6)))
    write("fuzz_kav_unpack", "video_frame", kav(0xFB, payload))
    write("fuzz_kav_unpack", "plain_frame", kav(0xFC, payload[:1]))
    write("fuzz_kav_unpack", "type_zero", kav(0x00, payload))
    write("fuzz_kav_unpack", "unknown_tag", kav(0xFA, payload, bytes([0x42, 3, 1, 2, 3]) + video() + audio()))
    write("fuzz_kav_unpack", "short_by_blocks", kav(0xFA, payload, video() + audio())[:-15])


MAGIC, VERSION = 0x4B4D5458, 1


def message(msg_type, payload, request_id=1, status=0):
    return struct.pack(">IHHIiI", MAGIC, VERSION, msg_type, request_id, status, len(payload)) + payload


def text(s):
    data = s.encode()
    return struct.pack(">I", len(data)) + data


def wire_corpus():
    write("fuzz_wire_codec", "heartbeat", message(0x0001, b""))
    write("fuzz_wire_codec", "login", message(0x0002, text("admin") + text("secret")))
    write("fuzz_wire_codec", "set_time", message(0x0004, struct.pack(">6i", 2024, 3, 1, 8, 0, 0)))
    write("fuzz_wire_codec", "id_list", message(0x0021, struct.pack(">I3I", 3, 1, 2, 5)))
    write("fuzz_wire_codec", "geometry_answer", message(0x8010, struct.pack(">ii", 4, 3) + text("wall"), 7))
    write("fuzz_wire_codec", "division", message(0x0026, struct.pack(">ii", 1, 4)))
    frame = kav(0xFA, bytes(32), video() + audio())
    write("fuzz_wire_codec", "display_frame", message(0x0063, struct.pack(">iiI", 1, 0, len(frame)) + frame))
    write("fuzz_wire_codec", "two_messages",
          message(0x0031, b"", 2) + message(0x8031, struct.pack(">I", 0), 2, -3))
    write("fuzz_wire_codec", "bad_version", struct.pack(">IHHIiI", MAGIC, 2, 1, 1, 0, 0))


if __name__ == "__main__":
    kav_corpus()
    wire_corpus()
