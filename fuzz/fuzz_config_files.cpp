// Reads arbitrary bytes as each of the module's local files: the decoder lists, the TV-wall list,
// the last connected decoder, the INI file and the error-description table. The first byte picks
// the file, the rest is its content. Whatever a file holds, what is read stays within the
// module's bounds, and a record read, written and read again is unchanged.

#include "ConfigFile.h"
#include "ErrorTexts.h"
#include "FuzzCheck.h"
#include "MatrixInfoJson.h"
#include "TvWallIni.h"
#include "TvWallJson.h"

#include <QByteArray>
#include <QDir>
#include <QJsonObject>
#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>

using namespace kvms_matrix;

namespace {

enum Target : uint8_t { DecoderList, DecoderListWithState, WallList, LastConnected, Ini, ErrorTable, TargetCount };

void put(const char* fileName, const uint8_t* data, size_t size)
{
    FILE* file = std::fopen(fileName, "wb");
    FUZZ_CHECK(file);
    FUZZ_CHECK(size == 0 || std::fwrite(data, 1, size, file) == size);
    FUZZ_CHECK(std::fclose(file) == 0);
}

bool sameRecord(const MatrixInfo& a, const MatrixInfo& b, MatrixInfoJson::Keys keys)
{
    const bool state = keys == MatrixInfoJson::WithoutScreenState
        || (a.screenCnt == b.screenCnt && a.connect_state == b.connect_state);
    return a.type == b.type && a.id == b.id && a.ip == b.ip && a.port == b.port && a.nvr_port == b.nvr_port
        && a.manager_port == b.manager_port && a.username == b.username && a.password == b.password
        && a.status == b.status && a.version == b.version && state;
}

void checkRecord(const MatrixInfo& info, MatrixInfoJson::Keys keys)
{
    MatrixInfo again;
    MatrixInfoJson::fromJson(MatrixInfoJson::toJson(info, keys), again, keys);
    FUZZ_CHECK(sameRecord(info, again, keys));
}

void decoderList(const char* fileName, MatrixInfoJson::Keys keys)
{
    const QMap<QString, MatrixInfo> list = MatrixInfoJson::readList(QString::fromLatin1(fileName), keys);
    FUZZ_CHECK(list.size() <= ConfigFile::kMaxEntries);
    for (auto it = list.cbegin(); it != list.cend(); ++it) {
        FUZZ_CHECK(it.key() == it->ip);
        checkRecord(*it, keys);
    }
}

void wallList()
{
    const QMap<QString, TvWallManagement> walls = TvWallJson::readList(QString::fromLatin1(ConfigFile::kTvWallConfig));
    FUZZ_CHECK(walls.size() <= ConfigFile::kMaxEntries);
    for (auto it = walls.cbegin(); it != walls.cend(); ++it) {
        FUZZ_CHECK(it.key() == it->name);
        FUZZ_CHECK(it->second_ip.size() <= ConfigFile::kMaxSecondaries);
        const QJsonObject written = TvWallJson::toJson(*it);
        FUZZ_CHECK(TvWallJson::toJson(TvWallJson::fromJson(written)) == written);
    }
}

void ini()
{
    const TvWallIni::Login login = TvWallIni::readLogin();
    FUZZ_CHECK(login.ip == login.ip.trimmed());
    TvWallIni::readProjection();
    const TvWallIni::Banner banner = TvWallIni::readBanner();
    FUZZ_CHECK(!banner.fontColor.isValid() || banner.fontColor.alpha() == 255);
}

// The first four bytes are the code looked up, the rest is the table.
void errorTable(const uint8_t* data, size_t size)
{
    int32_t code = 0;
    const size_t codeBytes = size < sizeof code ? size : sizeof code;
    std::memcpy(&code, data, codeBytes);
    put("ErrorCodeInfo.xml", data + codeBytes, size - codeBytes);
    ErrorTexts::describe(code, QStringLiteral("ErrorCodeInfo.xml"));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // The module's files live in the working directory: give the run its own, in memory where
    // the machine has it (every input is written to a file; a disk holds the run to its pace).
    const char* base = std::getenv("TMPDIR");
    if (!base)
        base = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    std::string dir = std::string(base) + "/fuzz_config_files.XXXXXX";
    if (!mkdtemp(dir.data()) || chdir(dir.c_str()) != 0)
        std::abort();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1 || size > size_t(ConfigFile::kMaxFileBytes))
        return 0;
    const uint8_t target = data[0] % TargetCount;
    ++data;
    --size;
    switch (target) {
    case DecoderList:
        put(ConfigFile::kMatrixConfig, data, size);
        decoderList(ConfigFile::kMatrixConfig, MatrixInfoJson::WithoutScreenState);
        break;
    case DecoderListWithState:
        put(ConfigFile::kDecoderConfig, data, size);
        decoderList(ConfigFile::kDecoderConfig, MatrixInfoJson::WithScreenState);
        break;
    case WallList:
        put(ConfigFile::kTvWallConfig, data, size);
        wallList();
        break;
    case LastConnected: {
        put(ConfigFile::kMatrixConfig, data, size);
        checkRecord(MatrixInfoJson::readLastConnected(QString::fromLatin1(ConfigFile::kMatrixConfig)),
            MatrixInfoJson::WithoutScreenState);
        break;
    }
    case Ini:
        put(ConfigFile::kTvWallIni, data, size);
        ini();
        break;
    case ErrorTable:
        errorTable(data, size);
        break;
    }
    return 0;
}
