#include "TvWallIni.h"

#include "ConfigFile.h"

#include <QSettings>

namespace kvms_matrix {

namespace {

const QString kInfo = QStringLiteral("info");
const QString kBanner = QStringLiteral("bannerinfo");

QString encode(const QString& text)
{
    return QString::fromLatin1(text.toUtf8().toBase64());
}

QString decode(const QString& text)
{
    return QString::fromUtf8(QByteArray::fromBase64(text.toLatin1()));
}

// A settings object on the file, created owner-only first if it does not exist yet. QSettings
// writes through a temporary file that copies the old file's mode as the current user may use
// it, which can add the owner's write bit; the old bits are put back after the write.
class IniGroup {
public:
    explicit IniGroup(const QString& group, bool forWriting)
        : m_mode(forWriting ? ConfigFile::modeOf(TvWallIni::fileName()) : -1)
        , m_settings(prepared(forWriting), QSettings::IniFormat)
    {
        m_settings.beginGroup(group);
    }
    ~IniGroup()
    {
        m_settings.endGroup();
        if (m_mode >= 0) {
            m_settings.sync();
            ConfigFile::restoreMode(TvWallIni::fileName(), m_mode);
        }
    }
    QSettings* operator->() { return &m_settings; }

private:
    static QString prepared(bool forWriting)
    {
        if (forWriting)
            ConfigFile::createOwnerOnly(TvWallIni::fileName());
        return TvWallIni::fileName();
    }

    int m_mode;
    QSettings m_settings;
};

} // namespace

QString TvWallIni::fileName()
{
    return QString::fromLatin1(ConfigFile::kTvWallIni);
}

TvWallIni::Login TvWallIni::readLogin()
{
    IniGroup ini(kInfo, false);
    Login login;
    login.type = ini->value(QStringLiteral("type"), -1).toInt();
    login.ip = ini->value(QStringLiteral("ip")).toString().trimmed();
    login.port = ini->value(QStringLiteral("port"), -1).toInt();
    login.username = decode(ini->value(QStringLiteral("username")).toString());
    login.password = decode(ini->value(QStringLiteral("password")).toString());
    return login;
}

void TvWallIni::writeLogin(const Login& login)
{
    IniGroup ini(kInfo, true);
    ini->setValue(QStringLiteral("type"), login.type);
    ini->setValue(QStringLiteral("ip"), login.ip);
    ini->setValue(QStringLiteral("port"), login.port);
    ini->setValue(QStringLiteral("username"), encode(login.username));
    ini->setValue(QStringLiteral("password"), encode(login.password));
}

TvWallIni::Projection TvWallIni::readProjection()
{
    IniGroup ini(kInfo, false);
    Projection projection;
    projection.isSoftwareProject = ini->value(QStringLiteral("is_software_project"), true).toBool();
    projection.devIp = ini->value(QStringLiteral("hardware_project_dev_ip")).toString();
    projection.devUser = ini->value(QStringLiteral("hardware_project_dev_user")).toString();
    projection.devPwd = ini->value(QStringLiteral("hardware_project_dev_pwd")).toString();
    return projection;
}

void TvWallIni::writeProjection(const Projection& projection)
{
    IniGroup ini(kInfo, true);
    ini->setValue(QStringLiteral("is_software_project"), projection.isSoftwareProject);
    ini->setValue(QStringLiteral("hardware_project_dev_ip"), projection.devIp);
    ini->setValue(QStringLiteral("hardware_project_dev_user"), projection.devUser);
    ini->setValue(QStringLiteral("hardware_project_dev_pwd"), projection.devPwd);
}

// The file holds a colour as "#rrggbb", so what is read from it is opaque; an "#aarrggbb" edited
// in by hand would otherwise paint the banner on the canvas translucent, or not at all.
static QColor opaqueColor(const QString& text)
{
    QColor color;
    if (!text.isEmpty())
        color = QColor(text);
    if (color.isValid())
        color.setAlpha(255);
    return color;
}

TvWallIni::Banner TvWallIni::readBanner()
{
    IniGroup ini(kBanner, false);
    Banner banner;
    banner.message = ini->value(QStringLiteral("message")).toString();
    banner.direction = ini->value(QStringLiteral("direction"), 0).toInt();
    banner.speed = ini->value(QStringLiteral("speed"), 0).toInt();
    banner.fontPercent = ini->value(QStringLiteral("fontPercent"), 0).toInt();
    banner.fontColor = opaqueColor(ini->value(QStringLiteral("fontColor")).toString());
    banner.backColor = opaqueColor(ini->value(QStringLiteral("backColor")).toString());
    banner.x = ini->value(QStringLiteral("x"), 0).toInt();
    banner.y = ini->value(QStringLiteral("y"), 0).toInt();
    banner.w = ini->value(QStringLiteral("w"), 0).toInt();
    banner.h = ini->value(QStringLiteral("h"), 0).toInt();
    return banner;
}

void TvWallIni::writeBanner(const Banner& banner, bool withFontPercent)
{
    IniGroup ini(kBanner, true);
    ini->setValue(QStringLiteral("message"), banner.message);
    ini->setValue(QStringLiteral("direction"), banner.direction);
    ini->setValue(QStringLiteral("speed"), banner.speed);
    if (withFontPercent)
        ini->setValue(QStringLiteral("fontPercent"), banner.fontPercent);
    ini->setValue(QStringLiteral("fontColor"), banner.fontColor.name());
    ini->setValue(QStringLiteral("backColor"), banner.backColor.name());
    ini->setValue(QStringLiteral("x"), banner.x);
    ini->setValue(QStringLiteral("y"), banner.y);
    ini->setValue(QStringLiteral("w"), banner.w);
    ini->setValue(QStringLiteral("h"), banner.h);
}

void TvWallIni::zeroBannerRect()
{
    IniGroup ini(kBanner, true);
    ini->setValue(QStringLiteral("x"), 0);
    ini->setValue(QStringLiteral("y"), 0);
    ini->setValue(QStringLiteral("w"), 0);
    ini->setValue(QStringLiteral("h"), 0);
}

} // namespace kvms_matrix
