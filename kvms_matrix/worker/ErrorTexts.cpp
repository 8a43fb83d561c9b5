#include "ErrorTexts.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QDomElement>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace kvms_matrix {

QString ErrorTexts::defaultTablePath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/") + QStringLiteral("ErrorCodeInfo.xml");
}

QString ErrorTexts::describe(int code, const QString& tablePath)
{
    const QString number = QString::number(code);
    QFile file(tablePath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return number;
    QDomDocument document;
    // A malformed table would leave whatever parsed before the error; it counts as no table.
    if (!document.setContent(&file))
        return number;
    // After the first "ErrorCode" every following sibling is looked at, whatever its name, so an
    // entry under another tag name still counts once the table has started.
    QDomElement entry = document.documentElement().firstChildElement(QStringLiteral("ErrorCode"));
    while (!entry.isNull()) {
        if (entry.attribute(QStringLiteral("CodeValue")) == number)
            return entry.attribute(QStringLiteral("ErrorDescripZH"));
        entry = entry.nextSiblingElement();
    }
    return number;
}

void ErrorTexts::parseLoginError(const char* text, ConnectErrorMsgInfo& info)
{
    if (!text)
        return;
    const QJsonObject top = QJsonDocument::fromJson(QByteArray(text)).object();
    if (top.isEmpty())
        return;
    info.errCode = top.value(QStringLiteral("ERRCODE")).toString();
    const QJsonObject param = top.value(QStringLiteral("PARAM")).toObject();
    if (info.errCode == QLatin1String("PASSWDERR") && !param.isEmpty()) {
        info.errNum = param.value(QStringLiteral("ERRNUM")).toInt();
        info.sumNum = param.value(QStringLiteral("SUMNUM")).toInt();
        // Seconds to whole minutes, remainder dropped.
        info.lockTime = param.value(QStringLiteral("LOCKTIME")).toInt() / 60;
    } else if (info.errCode == QLatin1String("USERLOCK") && !param.isEmpty()) {
        info.unlockTime = param.value(QStringLiteral("UNLOCKTIME")).toInt();
    }
}

} // namespace kvms_matrix
