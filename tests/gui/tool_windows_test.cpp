// The install and utility forms on screen, and the version check over real HTTP against
// a server on the loopback address that this test starts.
#include <QApplication>
#include <QComboBox>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QThread>

#include "app/app.h"
#include "gui/form_windows.h"
#include "gui/qt_services.h"
#include "gui_test_support.h"
#include "program/program.h"

using namespace tolvane;
using namespace tolvane::gui;

namespace {

// Qt's services with the message boxes answered OK and recorded.
class RecordingServices : public QtServices {
 public:
  ui::Answer message(const ui::Message& m) override {
    messages.push_back(m.title + "|" + m.text);
    return ui::Answer::OK;
  }
  std::vector<std::string> messages;
};

}  // namespace

class ToolWindowsTest : public QObject {
  Q_OBJECT
 private slots:
  void versionCheckOverLoopback();
  void toolFormsGetTheirWindows();
};

void ToolWindowsTest::versionCheckOverLoopback() {
  enum class Reply { Current, Newer, NotFound, Huge, Never };
  Reply reply = Reply::Current;
  QTcpServer server;
  QVERIFY(server.listen(QHostAddress::LocalHost));
  connect(&server, &QTcpServer::newConnection, [&] {
    QTcpSocket* socket = server.nextPendingConnection();
    connect(socket, &QTcpSocket::readyRead, [socket, &reply] {
      socket->readAll();
      QByteArray body;
      QByteArray status = "200 OK";
      switch (reply) {
        case Reply::Current: body = "Version 5.0\r\n"; break;
        case Reply::Newer: body = "Version 5.2,news\r\n"; break;
        case Reply::NotFound: status = "404 Not Found"; body = "no such file"; break;
        case Reply::Huge: body = QByteArray(10 << 20, 'x'); break;
        case Reply::Never: return;
      }
      socket->write("HTTP/1.0 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
                    body);
      socket->disconnectFromHost();
    });
  });
  // A port where nothing answers: one that was just free.
  quint16 closedPort = 0;
  {
    QTcpServer probe;
    QVERIFY(probe.listen(QHostAddress::LocalHost));
    closedPort = probe.serverPort();
  }
  struct Case {
    Reply reply;
    bool closed;
    std::string message;
  };
  const Case cases[] = {
      {Reply::Current, false, "Info|Your version of Tolvane is up to date!"},
      {Reply::Newer, false, "Info|Your version of Tolvane can be updated, the current version is ver 5.2"},
      {Reply::NotFound, false, "Error!|Info retrieval failed."},
      {Reply::Huge, false, "Error!|Info retrieval failed."},
      {Reply::Never, false, "Error!|Info retrieval failed."},
      {Reply::Current, true, "Error!|Info retrieval failed."},
  };
  for (const Case& c : cases) {
    RecordingServices services;
    services.setHttpTimeoutMs(700);
    tolvane::test::TempDir dir;
    ui::MemorySettings settings;
    quint16 port = c.closed ? closedPort : server.serverPort();
    settings.save(kAppName, "Startup", "WebSite", "http://127.0.0.1:" + std::to_string(port));
    ProgramOptions options;
    options.workDir = dir.path();
    options.currentDir = dir.path();
    Program program(services, settings, options);
    app::wire(program);
    reply = c.reply;
    fireEvent(program, "Opening", "menuCheckVer", EventKind::Click);
    QCOMPARE(services.messages, std::vector<std::string>{c.message});
  }
}

void ToolWindowsTest::toolFormsGetTheirWindows() {
  gui::test::WindowFixture f(true);
  f.program.settings.save(kAppName, "Startup", "PLoc", f.program.files().string() + "/");
  const std::pair<const char*, const char*> menus[] = {{"menuDialRenamer", "Renamer"},
                                                       {"menuRenumberFiles", "FormRenumber"},
                                                       {"MenuMagnifier", "Magnifier"},
                                                       {"MenuGraphPaper", "FormScale"},
                                                       {"MenuLauncher", "FormLaunch"}};
  for (const auto& [menu, form] : menus) {
    fireEvent(*f.program, "Opening", menu, EventKind::Click);
    FormBinding::flushAll();
    QApplication::processEvents();
    QWidget* window = f.window->formWindow(form);
    QVERIFY2(window != nullptr, form);
    QVERIFY2(window->isVisible(), form);
  }
  // The Renamer's folder list moves where its entry leads.
  QWidget* renamer = f.window->formWindow("Renamer");
  auto boxes = renamer->findChildren<QComboBox*>();
  QCOMPARE(boxes.size(), 2);
  QCOMPARE(boxes[1]->currentText().toStdString(), f.program->currentDir.string());
}

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  ToolWindowsTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "tool_windows_test.moc"
