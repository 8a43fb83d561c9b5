#pragma once

#include "CMatrixSDK.h"

#include <QMetaType>
#include <QObject>
#include <QSharedPointer>
#include <QString>

namespace kvms_matrix {

// One open decoder connection: the SDK handle plus the login data copied at connect time. Only
// ever held through QSharedPointer; when the last pointer goes, the SDK connection is destroyed.
class CSharedHandle : public QObject {
    Q_OBJECT
public:
    explicit CSharedHandle(CMHANDLE handle = nullptr, QObject* parent = nullptr);
    ~CSharedHandle() override;

    CMHANDLE handle() const { return m_handle; }
    void setHandle(CMHANDLE handle) { m_handle = handle; }

    QString ip() const { return m_ip; }
    void setIp(const QString& ip) { m_ip = ip; }
    QString userName() const { return m_userName; }
    void setUserName(const QString& userName) { m_userName = userName; }
    QString password() const { return m_password; }
    void setPassword(const QString& password) { m_password = password; }
    int type() const { return m_type; }
    void setType(int type) { m_type = type; }
    int managerPort() const { return m_managerPort; }
    void setManagerPort(int port) { m_managerPort = port; }
    int addPort() const { return m_addPort; }
    void setAddPort(int port) { m_addPort = port; }
    QString id() const { return m_id; }
    void setId(const QString& id) { m_id = id; }
    QString version() const { return m_version; }
    void setVersion(const QString& version) { m_version = version; }

private:
    CMHANDLE m_handle = nullptr;
    QString m_ip;
    QString m_userName;
    QString m_password;
    int m_type = -1;
    int m_managerPort = 0;
    int m_addPort = 0;
    QString m_id;
    QString m_version;
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(QSharedPointer<kvms_matrix::CSharedHandle>)
