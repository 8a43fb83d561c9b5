#include "KavFrame.h"
#include "SuiteMain.h"

#include <QtTest>

#include <climits>
#include <cstdio>
#include <cstring>
#include <unistd.h>
#include <vector>

using Bytes = std::vector<unsigned char>;
Q_DECLARE_METATYPE(Bytes)
Q_DECLARE_METATYPE(KavStreamInfo)

namespace {

constexpr int kNoLimit = -1;

Bytes payloadOf(int size)
{
    Bytes payload(static_cast<size_t>(size));
    for (int i = 0; i < size; ++i)
        payload[size_t(i)] = static_cast<unsigned char>(i * 7 + 3);
    return payload;
}

KavStreamInfo streamInfo(
    unsigned flags, unsigned num = 25, unsigned den = 1, unsigned short width = 1920, unsigned short height = 1080)
{
    KavStreamInfo info {};
    info.flags = flags;
    info.videoCodec = 1;
    info.frameRateNum = num;
    info.frameRateDen = den;
    info.width = width;
    info.height = height;
    return info;
}

// A hand-made envelope: fixed header, the given blocks, then `size` payload bytes
// unless `payloadBytes` says otherwise.
Bytes envelope(
    unsigned char type, unsigned size, const Bytes& blocks, int payloadBytes = kNoLimit, const char* magic = "kav")
{
    Bytes out(magic, magic + 3);
    out.push_back(type);
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<unsigned char>(size >> shift));
    for (unsigned char b : { 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08 })
        out.push_back(b);
    out.push_back(static_cast<unsigned char>(blocks.size()));
    out.insert(out.end(), blocks.begin(), blocks.end());
    const Bytes payload = payloadOf(payloadBytes == kNoLimit ? int(size) : payloadBytes);
    out.insert(out.end(), payload.begin(), payload.end());
    return out;
}

const Bytes kVideo25 = { 0x10, 7, 1, 0x09, 0xC4, 0x07, 0x80, 0x04, 0x38 };
const Bytes kAudio = { 0x11, 4, 0xB2, 0xD4, 0xA1, 0xC3 };

// What `run` writes to standard output; short texts only, the pipe is read at the end.
template <class F> QByteArray printedBy(F run)
{
    int fds[2];
    std::fflush(stdout);
    if (::pipe(fds) != 0)
        return "(no pipe)";
    const int saved = ::dup(STDOUT_FILENO);
    ::dup2(fds[1], STDOUT_FILENO);
    run();
    std::fflush(stdout);
    ::dup2(saved, STDOUT_FILENO);
    ::close(saved);
    ::close(fds[1]);
    QByteArray text;
    char chunk[256];
    for (ssize_t n; (n = ::read(fds[0], chunk, sizeof chunk)) > 0;)
        text.append(chunk, int(n));
    ::close(fds[0]);
    return text;
}

Bytes operator+(Bytes a, const Bytes& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

} // namespace

class TestKavFrame : public QObject {
    Q_OBJECT

private slots:
    void sizes_data()
    {
        QTest::addColumn<unsigned>("type");
        QTest::addColumn<unsigned>("payload");
        QTest::addColumn<int>("header");
        QTest::addColumn<int>("total");
        QTest::newRow("249") << 249u << 10u << 23 << 33;
        QTest::newRow("250") << 250u << 1000u << 32 << 1032;
        QTest::newRow("251") << 251u << 1u << 17 << 18;
        QTest::newRow("0") << 0u << 1000u << -1 << -1;
        QTest::newRow("0x1FA, low byte 250") << 0x1FAu << 1u << -1 << -1;
        QTest::newRow("largest that fits") << 251u << unsigned(INT_MAX - 17) << 17 << INT_MAX;
        QTest::newRow("past INT_MAX") << 251u << unsigned(INT_MAX - 16) << 17 << -1;
        QTest::newRow("wrap of 32 bits") << 250u << 0xFFFFFFF0u << 32 << -1;
    }

    void sizes()
    {
        QFETCH(unsigned, type);
        QFETCH(unsigned, payload);
        QFETCH(int, header);
        QFETCH(int, total);
        QCOMPARE(KavCalcFrameHeaderSize(type), header);
        QCOMPARE(KavCalcFrameSize(type, payload), total);
    }

    void packKeyFrameExactBytes()
    {
        const Bytes payload = payloadOf(1000);
        const KavFrame frame { 250, payload.data(), 1000, 0x0102030405060708ull };
        const KavStreamInfo info = streamInfo(KAV_STREAM_VIDEO | KAV_STREAM_AUDIO);
        Bytes out(1032, 0xEE);
        QCOMPARE(KavPackFrame(&frame, &info, out.data(), int(out.size())), 1032);
        const Bytes header = { 'k', 'a', 'v', 0xFA, 0x00, 0x00, 0x03, 0xE8, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07,
            0x08, 15, 0x10, 7, 1, 0x09, 0xC4, 0x07, 0x80, 0x04, 0x38, 0x11, 4, 0, 0, 0, 0 };
        QCOMPARE(Bytes(out.begin(), out.begin() + 32), header);
        QCOMPARE(Bytes(out.begin() + 32, out.end()), payload);
    }

    void pack_data()
    {
        QTest::addColumn<unsigned>("type");
        QTest::addColumn<KavStreamInfo>("info");
        QTest::addColumn<int>("expected");
        QTest::addColumn<int>("typeByte");
        QTest::addColumn<int>("extLength");
        const unsigned both = KAV_STREAM_VIDEO | KAV_STREAM_AUDIO;
        QTest::newRow("250 both blocks") << 250u << streamInfo(both) << 32 + 64 << 0xFA << 15;
        QTest::newRow("250 video flag only") << 250u << streamInfo(KAV_STREAM_VIDEO) << -1 << 0 << 0;
        QTest::newRow("250 num 0") << 250u << streamInfo(both, 0, 1) << -1 << 0 << 0;
        QTest::newRow("250 width 0") << 250u << streamInfo(both, 25, 1, 0) << -1 << 0 << 0;
        QTest::newRow("249 audio flag only") << 249u << streamInfo(KAV_STREAM_AUDIO) << 23 + 64 << 0xF9 << 6;
        QTest::newRow("249 no audio flag") << 249u << streamInfo(KAV_STREAM_VIDEO) << -1 << 0 << 0;
        QTest::newRow("249 video flag, width 0")
            << 249u << streamInfo(both, 25, 1, 0) << -1 << 0 << 0; // validated though never written
        QTest::newRow("251 no flags") << 251u << streamInfo(0, 0, 0, 0, 0) << 17 + 64 << 0xFB << 0;
        QTest::newRow("251 video flag, height 0") << 251u << streamInfo(KAV_STREAM_VIDEO, 25, 1, 8, 0) << -1 << 0 << 0;
        QTest::newRow("type 0") << 0u << streamInfo(both) << 17 + 64 << 0x00 << 0;
        QTest::newRow("0x1FA gets a bare header") << 0x1FAu << streamInfo(0) << 17 + 64 << 0xFA << 0;
    }

    void pack()
    {
        QFETCH(unsigned, type);
        QFETCH(KavStreamInfo, info);
        QFETCH(int, expected);
        const Bytes payload = payloadOf(64);
        const KavFrame frame { type, payload.data(), 64, 7 };
        Bytes out(32 + 64, 0xEE);
        QCOMPARE(KavPackFrame(&frame, &info, out.data(), int(out.size())), expected);
        if (expected < 0)
            return;
        QFETCH(int, typeByte);
        QFETCH(int, extLength);
        QCOMPARE(int(out[3]), typeByte);
        QCOMPARE(int(out[16]), extLength);
        QCOMPARE(Bytes(out.begin() + (expected - 64), out.begin() + expected), payload);
    }

    void frameRate_data()
    {
        QTest::addColumn<unsigned>("num");
        QTest::addColumn<unsigned>("den");
        QTest::addColumn<int>("wire");
        QTest::newRow("30000/1001") << 30000u << 1001u << 2997;
        QTest::newRow("1000/1 keeps 16 bits") << 1000u << 1u << (100000 & 0xFFFF);
        QTest::newRow("product wraps in 32 bits") << 50000000u << 3u << 0xFB55;
    }

    void frameRate()
    {
        QFETCH(unsigned, num);
        QFETCH(unsigned, den);
        const Bytes payload = payloadOf(4);
        const KavFrame frame { 250, payload.data(), 4, 0 };
        const KavStreamInfo info = streamInfo(KAV_STREAM_VIDEO | KAV_STREAM_AUDIO, num, den);
        Bytes out(36);
        QCOMPARE(KavPackFrameHeader(&frame, &info, out.data(), int(out.size())), 32);
        QFETCH(int, wire);
        QCOMPARE((out[20] << 8) | out[21], wire);
    }

    void capacity_data()
    {
        QTest::addColumn<unsigned>("type");
        QTest::addColumn<unsigned>("size");
        QTest::addColumn<int>("capacity");
        QTest::addColumn<bool>("headerOnly");
        QTest::addColumn<int>("expected");
        QTest::newRow("250 one byte short") << 250u << 1000u << 1031 << false << -1;
        QTest::newRow("250 exact") << 250u << 1000u << 1032 << false << 1032;
        QTest::newRow("header 250, 32 bytes") << 250u << 1000u << 32 << true << 32;
        // An unknown type is let through whatever the capacity says (the test is
        // against -1); the real buffer here is large enough.
        QTest::newRow("type 0, capacity 0") << 0u << 1000u << 0 << false << 1017;
        QTest::newRow("header type 0, capacity 0") << 0u << 1000u << 0 << true << 17;
        QTest::newRow("type 0, capacity -2") << 0u << 1000u << -2 << false << -1;
        QTest::newRow("size near 4 GiB does not wrap") << 251u << 0xFFFFFFF0u << INT_MAX << false << -1;
    }

    void capacity()
    {
        QFETCH(unsigned, type);
        QFETCH(unsigned, size);
        QFETCH(int, capacity);
        const Bytes payload = payloadOf(1000);
        const KavFrame frame { type, payload.data(), size, 0 };
        const KavStreamInfo info = streamInfo(KAV_STREAM_VIDEO | KAV_STREAM_AUDIO);
        Bytes out(1032 + 16);
        QFETCH(bool, headerOnly);
        QFETCH(int, expected);
        const int result = headerOnly ? KavPackFrameHeader(&frame, &info, out.data(), capacity)
                                      : KavPackFrame(&frame, &info, out.data(), capacity);
        QCOMPARE(result, expected);
    }

    void nullArguments()
    {
        const Bytes payload = payloadOf(8);
        const KavFrame frame { 251, payload.data(), 8, 0 };
        const KavFrame noData { 251, nullptr, 8, 0 };
        const KavFrame empty { 251, payload.data(), 0, 0 };
        const KavStreamInfo info {};
        Bytes out(64);
        QCOMPARE(KavPackFrame(nullptr, &info, out.data(), 64), -1);
        QCOMPARE(KavPackFrame(&frame, nullptr, out.data(), 64), -1);
        QCOMPARE(KavPackFrame(&frame, &info, nullptr, 64), -1);
        QCOMPARE(KavPackFrame(&noData, &info, out.data(), 64), -1);
        QCOMPARE(KavPackFrame(&empty, &info, out.data(), 64), -1);
        QCOMPARE(KavPackFrameHeader(&noData, &info, out.data(), 64), -1);
        QCOMPARE(KavPackFrameHeader(nullptr, &info, out.data(), 64), -1);

        QCOMPARE(KavPackFrame(&frame, &info, out.data(), 64), 25);
        KavFrame f;
        KavStreamInfo i;
        QCOMPARE(KavUnpackFrame(nullptr, 25, &f, &i), -1);
        QCOMPARE(KavUnpackFrame(out.data(), 25, nullptr, &i), -1);
        QCOMPARE(KavUnpackFrame(out.data(), 25, &f, nullptr), -1);
        QCOMPARE(KavUnpackFrame(out.data(), 25, &f, &i), 8);
    }

    void audioBytesCrossed()
    {
        const Bytes payload = payloadOf(4);
        const KavFrame frame { 249, payload.data(), 4, 0 };
        KavStreamInfo info = streamInfo(KAV_STREAM_AUDIO);
        info.audioA = 0x1A1, info.audioB = 0xB2, info.audioC = 0xC3, info.audioD = 0xD4;
        Bytes out(27);
        QCOMPARE(KavPackFrame(&frame, &info, out.data(), 27), 27);
        QCOMPARE(Bytes(out.begin() + 17, out.begin() + 23), kAudio);

        const Bytes wire = envelope(249, 4, { 0x11, 4, 0x01, 0x02, 0x03, 0x04 });
        KavFrame f;
        KavStreamInfo read;
        QCOMPARE(KavUnpackFrame(wire.data(), int(wire.size()), &f, &read), 4);
        QCOMPARE(read.audioA, 3u);
        QCOMPARE(read.audioB, 1u);
        QCOMPARE(read.audioC, 4u);
        QCOMPARE(read.audioD, 2u);
    }

    void unpack_data()
    {
        QTest::addColumn<Bytes>("wire");
        QTest::addColumn<int>("cut"); // bytes removed from the end before unpacking
        QTest::addColumn<int>("expected");
        QTest::addColumn<int>("dataOffset");
        QTest::addColumn<unsigned>("flags");
        QTest::addColumn<QByteArray>("printed");
        const QByteArray none;
        const QByteArray unknown("Unknown type\n");
        const Bytes both = kVideo25 + kAudio;
        QTest::newRow("complete") << envelope(250, 100, both) << 0 << 100 << 32 << 3u << none;
        QTest::newRow("short by the blocks") << envelope(250, 100, both) << 15 << 100 << 32 << 3u << none;
        QTest::newRow("short by one more") << envelope(250, 100, both) << 16 << -1 << 0 << 0u << none;
        QTest::newRow("16 bytes") << envelope(251, 1, {}) << 2 << -1 << 0 << 0u << none;
        QTest::newRow("bad magic") << envelope(251, 1, {}, kNoLimit, "kaV") << 0 << -1 << 0 << 0u << none;
        QTest::newRow("size 0") << envelope(251, 0, {}) << 0 << -1 << 0 << 0u << none;
        QTest::newRow("size 0xFFFFFFFF") << envelope(251, 0xFFFFFFFFu, {}, 64) << 0 << -1 << 0 << 0u << none;
        QTest::newRow("width 0") << envelope(250, 8, { 0x10, 7, 1, 0x09, 0xC4, 0, 0, 0x04, 0x38 }) << 0 << -1 << 0 << 0u
                                 << none;
        QTest::newRow("rate 0") << envelope(250, 8, { 0x10, 7, 1, 0, 0, 0x07, 0x80, 0x04, 0x38 }) << 0 << -1 << 0 << 0u
                                << none;
        QTest::newRow("unknown tag, length 3, then audio")
            << envelope(250, 8, Bytes { 0x42, 3, 0xAA, 0xBB, 0xCC } + kAudio) << 0 << 8 << 28 << 2u << unknown;
        QTest::newRow("two unknown tags")
            << envelope(251, 8, { 0x20, 0, 0x21, 1, 0 }) << 0 << 8 << 22 << 0u << unknown + unknown;
        QTest::newRow("length byte of known tags ignored")
            << envelope(250, 8, Bytes { 0x10, 0, 1, 0x09, 0xC4, 0x07, 0x80, 0x04, 0x38, 0x11, 99, 0, 0, 0, 0 }) << 0
            << 8 << 32 << 3u << none;
        QTest::newRow("blocks on a 251") << envelope(251, 8, kAudio) << 0 << 8 << 23 << 2u << none;
        // The blocks claimed by the header run past the input: only what is there is read.
        QTest::newRow("video block past the end") << envelope(250, 2, kVideo25) << 9 << 2 << 26 << 0u << none;
        QTest::newRow("unknown tag past the end") << envelope(251, 1, { 0x33, 0x10 }) << 2 << 1 << 19 << 0u << none;
    }

    void unpack()
    {
        QFETCH(Bytes, wire);
        QFETCH(int, cut);
        QFETCH(int, expected);
        QFETCH(int, dataOffset);
        QFETCH(unsigned, flags);
        QFETCH(QByteArray, printed);
        // A fresh allocation of exactly inLength bytes, so AddressSanitizer sees any
        // read past the end.
        const Bytes input(wire.begin(), wire.end() - cut);
        KavFrame frame;
        KavStreamInfo info;
        int result = 0;
        QCOMPARE(printedBy([&] { result = KavUnpackFrame(input.data(), int(input.size()), &frame, &info); }), printed);
        QCOMPARE(result, expected);
        if (expected < 0)
            return;
        QCOMPARE(int(frame.data - input.data()), dataOffset);
        QCOMPARE(info.flags, flags);
        QCOMPARE(frame.timestamp, 0x0102030405060708ull);
    }
};

KVMS_TEST_CLASS(TestKavFrame)
#include "TestKavFrame.moc"
