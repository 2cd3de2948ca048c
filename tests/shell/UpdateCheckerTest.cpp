#include "shell/updates/UpdateChecker.h"

#include "support/Fakes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

namespace orvanlite::test {

namespace {

QByteArray answer(const QByteArray& body, const QByteArray& status = "200 OK", const QByteArray& headers = {})
{
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) +
           "\r\nConnection: close\r\n" + headers + "\r\n" + body;
}

/// Answers each request with the next scripted answer.
class UpdateServer final : public QTcpServer {
public:
    QByteArrayList requests;
    std::deque<QByteArray> answers;  ///< raw; an empty one is never sent
    std::deque<QTcpSocket*> waiting; ///< got an empty answer: to be served by the test

    UpdateServer()
    {
        EXPECT_TRUE(listen(QHostAddress::LocalHost));
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, received = QByteArray()]() mutable {
                received += socket->readAll();
                if (received.endsWith('}')) // of the body, which is an object
                    answer(*socket, received);
            });
        });
    }
    [[nodiscard]] QString url() const { return u"http://127.0.0.1:%1"_s.arg(serverPort()); }
    static void send(QTcpSocket& socket, const QByteArray& bytes)
    {
        socket.write(bytes);
        socket.disconnectFromHost();
    }

private:
    void answer(QTcpSocket& socket, const QByteArray& request)
    {
        requests.push_back(request);
        const QByteArray next = answers.empty() ? QByteArray() : answers.front();
        if (!answers.empty())
            answers.pop_front();
        if (next.isEmpty())
            waiting.push_back(&socket);
        else
            send(socket, next);
    }
};

class UpdateCheckerTest : public testing::Test {
protected:
    UpdateCheckerTest() { m_system.root.addFile(u"/etc/machine-id", "0123456789abcdef\n"); }

    void check(const QByteArray& raw)
    {
        m_server.answers = {raw};
        runTask(m_checker.checkForUpdates());
    }
    [[nodiscard]] QString state() const
    {
        return (*m_checker.updateAvailable ? u"yes|"_s : u"no|"_s) + *m_checker.latestVersion + u'|' +
               *m_checker.updateDownloadURL + u'|' + *m_checker.updateReleaseNotes;
    }

    TestPlatform m_system;
    UpdateServer m_server;
    UpdateChecker m_checker{m_system.platform,
                            {m_server.url(),
                             u"https://good.test/default"_s,
                             {u"Good.TEST"_s, u"bücher.test"_s, u"no host"_s},
                             kTimeOut}};
    static constexpr std::chrono::milliseconds kTimeOut{1'000};
};

TEST_F(UpdateCheckerTest, AsksWithTheVersionAndTheMachine)
{
    check(answer("{}"));
    m_system.root.addFile(u"/Applications/Orvanlite.app/Contents/Info.plist",
                          infoPlist({{u"CFBundleShortVersionString"_s, u"7.8"_s}}));
    check(answer("{}"));
    ASSERT_EQ(m_server.requests.size(), 2);
    EXPECT_TRUE(m_server.requests[0].startsWith("POST /check-update HTTP/1.1\r\n"));
    EXPECT_TRUE(m_server.requests[0].toLower().contains("content-type: application/json"));
    const auto body = [this](qsizetype i) {
        return QJsonDocument::fromJson(m_server.requests[i].mid(m_server.requests[i].indexOf('{'))).object();
    };
    EXPECT_EQ(body(0).keys(), QStringList({u"app_version"_s, u"hardware_id"_s}));
    EXPECT_EQ(body(0)[u"app_version"_s].toString(), u"0.0.0"_s);
    EXPECT_EQ(body(1)[u"app_version"_s].toString(), u"7.8"_s);
    const QString machine = body(0)[u"hardware_id"_s].toString();
    EXPECT_EQ(body(1)[u"hardware_id"_s].toString(), machine) << "the same at every run";
    EXPECT_EQ(machine.size(), 64);
    EXPECT_FALSE(machine.contains(u"0123456789abcdef"_s));
    m_system.root.addFile(u"/etc/machine-id", "fedcba9876543210\n");
    EXPECT_NE(hardwareId(m_system.platform), machine);
    m_system.root.addFile(u"/etc/machine-id", "\n");
    const QString made = hardwareId(m_system.platform);
    EXPECT_EQ(hardwareId(m_system.platform), made);
    m_system.defaults.standard().setValue(u"machineIdentifier"_s, {});
    EXPECT_NE(hardwareId(m_system.platform), made) << "not the same on all machines without an identifier";
}

TEST_F(UpdateCheckerTest, TakesOverWhatTheAnswerSays)
{
    const QString byDefault = u"https://good.test/default|"_s;
    const std::tuple<const char*, QByteArray, QString> rows[] = {
        {"all of it", answer(R"({"latest_version":"3.0","download_url":"https://good.test/a.dmg",
                    "release_notes":"Faster","update_available":true,"other":1})"),
         u"yes|3.0|https://good.test/a.dmg|Faster"_s},
        {"nothing", answer("{}"), u"no||"_s + byDefault},
        {"null", answer(R"({"latest_version":null,"update_available":true})"), u"yes||"_s + byDefault},
        {"a status of 500", answer(R"({"latest_version":"4"})", "500 Oh"), u"no|4|"_s + byDefault},
        {"a status of 407", answer(R"({"latest_version":"6"})", "407 Oh"), u"no|6|"_s + byDefault},
        {"a status of 404", answer(R"({"latest_version":"5"})", "404 Oh"), u"no|5|"_s + byDefault},
    };
    for (const auto& [name, raw, wanted] : rows) {
        SCOPED_TRACE(name);
        check(raw);
        EXPECT_EQ(state(), wanted);
    }
}

TEST_F(UpdateCheckerTest, TrustsTheParsedHostAlone)
{
    const auto given = [this](const QString& url) {
        check(answer(u"{\"download_url\":\"%1\"}"_s.arg(url).toUtf8()));
        return *m_checker.updateDownloadURL;
    };
    for (const QString& url : {u"https://GOOD.Test/a"_s, u"http://good.test/a"_s,
                               u"https://good.test:8443/a"_s, u"https://xn--bcher-kva.test/a"_s})
        EXPECT_EQ(given(url), url);
    for (const QString& url :
         {u"https://good.test@evil.test/a"_s, u"https://good.test.evil.test/a"_s,
          u"https://evilgood.test/a"_s, u"https://evil.test/good.test"_s, u"https://evil.test/?good.test"_s,
          u"//good.test/a"_s, u"file://good.test/a"_s, u"ftp://good.test/a"_s, u"good.test/a"_s,
          u"https:///good.test"_s, u"ht tp://good.test/a b"_s, u"https://good.test\\\\@evil.test"_s, u""_s})
        EXPECT_EQ(given(url), u"https://good.test/default"_s) << qPrintable(url);
}

TEST_F(UpdateCheckerTest, KeepsItsStateWithoutAnAnswer)
{
    UpdateServer elsewhere;
    elsewhere.answers = {answer(R"({"latest_version":"foreign"})")};
    check(answer(R"({"latest_version":"3.0","release_notes":"Kept","update_available":true})"));
    const QString before = state();
    const QByteArray redirect = "Location: " + elsewhere.url().toUtf8() + "/check-update\r\n";
    const std::pair<const char*, QByteArray> rows[] = {
        {"no JSON", answer("<html>")},
        {"a list", answer("[]")},
        {"a number as text", answer(R"({"latest_version":3})")},
        {"a text as verdict", answer(R"({"update_available":"true","latest_version":"9"})")},
        {"no HTTP", "hello\r\n\r\n"},
        {"cut in its body", "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{\"latest_version\":\"9\"}"},
        {"too slow", {}},
        {"longer than any answer", answer("{\"latest_version\":\"9\"}" + QByteArray(2 << 20, ' '))},
        {"unpacks to nothing", answer(R"({"latest_version":"9"})", "200 OK", "Content-Encoding: gzip\r\n")},
        {"sent to a foreign host", answer("", "307 Temporary Redirect", redirect)},
    };
    for (const auto& [name, raw] : rows) {
        check(raw);
        EXPECT_EQ(state(), before) << name;
    }
    EXPECT_TRUE(elsewhere.requests.isEmpty()) << "the machine's identifier stays with the service";
    m_server.close();
    runTask(m_checker.checkForUpdates());
    EXPECT_EQ(state(), before) << "no server at all";
}

TEST_F(UpdateCheckerTest, GivesUpOnAnAnswerThatOnlyDrips)
{
    auto task = m_checker.checkForUpdates();
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_server.waiting.size() == 1; }));
    QTcpSocket& socket = *m_server.waiting.front();
    socket.write("HTTP/1.1 200 OK\r\n\r\n{\"latest_version\":\"9\"}");
    QTimer drip;
    QObject::connect(&drip, &QTimer::timeout, &socket, [&socket] { socket.write(" "); });
    drip.start(kTimeOut / 10);
    runTask(std::move(task));
    EXPECT_EQ(*m_checker.latestVersion, QString());
}

TEST_F(UpdateCheckerTest, FollowsARedirectOfTheServiceItself)
{
    m_server.answers = {answer("", "307 Temporary Redirect", "Location: /v2/check-update\r\n"),
                        answer(R"({"latest_version":"6"})")};
    runTask(m_checker.checkForUpdates());
    EXPECT_EQ(*m_checker.latestVersion, u"6"_s);
}

TEST_F(UpdateCheckerTest, OfTwoChecksTheLaterAnswerWins)
{
    auto first = m_checker.checkForUpdates();
    auto second = m_checker.checkForUpdates();
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_server.waiting.size() == 2; }));
    for (const std::size_t request : {1U, 0U}) {
        const QString version = QString::number(request);
        UpdateServer::send(*m_server.waiting[request],
                           answer("{\"latest_version\":\"" + version.toUtf8() + "\"}"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return *m_checker.latestVersion == version; }));
    }
    runTask(std::move(first));
    runTask(std::move(second));
}

} // namespace

} // namespace orvanlite::test
