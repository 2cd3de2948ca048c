#pragma once

#include "support/TempRoot.h"

#include <QObject>
#include <QProcess>
#include <QVariantMap>

namespace orvanlite::test {

/// A session bus without the services of this machine.
class PrivateBus {
public:
    PrivateBus()
    {
        m_root.addFile(u"/bus.conf",
                       "<busconfig><type>session</type><listen>unix:dir=" + m_root.path().toUtf8() +
                           "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>");
        m_daemon.start(u"dbus-daemon"_s,
                       {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + m_root.at(u"/bus.conf")});
        while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead()) {
        }
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    ~PrivateBus() { stop(); }
    void stop()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    [[nodiscard]] QString address() const { return m_address; }

private:
    TempRoot m_root;
    QProcess m_daemon;
    QString m_address;
};

/// A virtual display, without the settings of this machine.
class VirtualScreen {
public:
    VirtualScreen()
    {
        m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s});
        while (!m_server.canReadLine() && m_server.waitForReadyRead()) {
        }
        qputenv("DISPLAY", ':' + m_server.readLine().trimmed());
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
    ~VirtualScreen()
    {
        m_server.terminate();
        m_server.waitForFinished();
    }

private:
    QProcess m_server;
};

class FakeNotificationService final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QList<QStringList> shown; ///< application, title and body of each
    QStringList capabilities{u"body"_s, u"body-markup"_s};

public Q_SLOTS:
    QStringList GetCapabilities() { return capabilities; }
    uint Notify(const QString& application, uint, const QString&, const QString& title, const QString& body,
                const QStringList&, const QVariantMap&, int)
    {
        shown.append({application, title, body});
        return static_cast<uint>(shown.size());
    }
};

} // namespace orvanlite::test
