// The Qt side of Services and Settings: what a message box request turns into and the
// answer the user's button gives, printing, outside programs, and the settings store.
#include "gui/qt_services.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QPrinter>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

#include "text/runtime_error.h"
#include "gui/app_setup.h"
#include "gui/qt_settings.h"
#include "test_support.h"

using namespace tolvane;
using namespace tolvane::gui;

class QtServicesTest : public QObject {
  Q_OBJECT
 private slots:
  void messageBoxShowsTheRequestAndAnswersItsButton();
  void printsTextToPdf();
  void windowsProgramsNeedWine();
  void settingsRoundTripAndUnwritableStore();
  void fileDialogTakesFolderNameAndFilter();
  void httpGetFetchesOrTimesOut();
  void commandLineIsOnePath();
};

void QtServicesTest::messageBoxShowsTheRequestAndAnswersItsButton() {
  using B = QMessageBox::StandardButton;
  using Q = QMessageBox;
  using A = ui::Answer;
  using I = ui::Icon;
  using UB = ui::Buttons;
  struct Case {
    ui::Buttons buttons;
    ui::Icon icon;
    QMessageBox::StandardButtons qtButtons;
    QMessageBox::Icon qtIcon;
    B press;
    ui::Answer answer;
  };
  const Case cases[] = {
      {UB::OK, I::None, B::Ok, Q::NoIcon, B::Ok, A::OK},
      {UB::OKCancel, I::Exclamation, B::Ok | B::Cancel, Q::Warning, B::Cancel, A::Cancel},
      {UB::YesNo, I::Question, B::Yes | B::No, Q::Question, B::No, A::No},
      {UB::YesNoCancel, I::Information, B::Yes | B::No | B::Cancel, Q::Information, B::Yes, A::Yes},
      {UB::AbortRetryIgnore, I::Critical, B::Abort | B::Retry | B::Ignore, Q::Critical, B::Retry, A::Retry},
      {UB::RetryCancel, I::Critical, B::Retry | B::Cancel, Q::Critical, B::Cancel, A::Cancel},
  };
  QtServices services;
  for (const Case& c : cases) {
    ui::Message m{"Save path changes before exit?\r\nSecond line \x93quoted\x94", "Alert!", c.buttons,
                  c.icon};
    auto box = QtServices::makeMessageBox(m, nullptr);
    QCOMPARE(box->windowTitle(), QString("Alert!"));
    QCOMPARE(box->text(), QString::fromUtf8("Save path changes before exit?\nSecond line “quoted”"));
    QCOMPARE(box->standardButtons(), c.qtButtons);
    QCOMPARE(box->icon(), c.qtIcon);
    QTimer::singleShot(10, [&] {
      if (auto* shown = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
        shown->button(c.press)->click();
    });
    QCOMPARE(services.message(m), c.answer);
  }
}

void QtServicesTest::printsTextToPdf() {
  test::TempDir dir;
  QString pdf = QString::fromStdString((dir / "listing.pdf").string());
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFileName(pdf);
  ui::PrintJob job{"Inventory", "Runtime\\Geometries\\Vicky.obj\r\nRuntime\\textures\\skin.jpg\r\n",
                   "Courier", 10};
  QtServices::printText(printer, job);
  QFile file(pdf);
  QVERIFY(file.open(QIODevice::ReadOnly));
  QCOMPARE(file.read(5), QByteArray("%PDF-"));
  QVERIFY(file.size() > 500);
}

void QtServicesTest::windowsProgramsNeedWine() {
  if (!QStandardPaths::findExecutable("wine").isEmpty()) QSKIP("wine is installed here");
  QtServices services;
  QVERIFY(!services.startProcess("/opt/Poser/Poser.exe", {}));
  services.playSound("/nonexistent/Quillmere3.wav");  // a missing sound is no error
}

void QtServicesTest::settingsRoundTripAndUnwritableStore() {
  test::TempDir dir;
  QString ini = QString::fromStdString((dir / "settings.ini").string());
  {
    QtSettings settings(ini);
    settings.save("Tolvane", "Startup", "PLoc", "C:\\Program Files\\Poser\\");
    settings.save("Tolvane", "MRUFiles", "0", "/home/me/figures/a, b.cr2");
  }
  QtSettings again(ini);
  QCOMPARE(again.get("Tolvane", "Startup", "PLoc", "0"), std::string("C:\\Program Files\\Poser\\"));
  QCOMPARE(again.get("Tolvane", "MRUFiles", "0", ""), std::string("/home/me/figures/a, b.cr2"));
  QCOMPARE(again.get("Tolvane", "MRUFiles", "1", ""), std::string());

  // A store under a plain file cannot be written.
  test::writeFile(dir / "plain", "x");
  QtSettings blocked(QString::fromStdString((dir / "plain" / "settings.ini").string()));
  QVERIFY_THROWS_EXCEPTION(text::RuntimeError, blocked.save("Tolvane", "Startup", "Ver", "5.0"));
}

void QtServicesTest::fileDialogTakesFolderNameAndFilter() {
  test::TempDir dir;
  QtServices services;
  ui::FileDialogRequest request;
  request.kind = ui::FileDialogRequest::Kind::Save;
  request.startFolder = dir.path();
  request.fileName = "Vicky.cr2";
  // Accepted as it comes up, the dialog gives the name in the folder it was handed.
  QTimer::singleShot(20, [] {
    if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget()))
      static_cast<QDialog*>(dialog)->accept();
  });
  QCOMPARE(services.fileDialog(request), std::optional<std::string>((dir / "Vicky.cr2").string()));

  QTimer::singleShot(20, [] {
    if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) dialog->reject();
  });
  request.kind = ui::FileDialogRequest::Kind::Open;
  QVERIFY(!services.fileDialog(request).has_value());

  // Filters come in the bar form "Figures|*.cr2".
  QCOMPARE(QtServices::dialogFilter(""), QString());
  QCOMPARE(QtServices::dialogFilter("Figures|*.cr2|All files|*.*"),
           QString("Figures (*.cr2);;All files (*.*)"));
  QCOMPARE(QtServices::dialogFilter("Poses|*.pz2;*.fc2"), QString("Poses (*.pz2 *.fc2)"));
  QCOMPARE(QtServices::dialogFilter("Images (*.bmp)"), QString("Images (*.bmp)"));
}

void QtServicesTest::httpGetFetchesOrTimesOut() {
  QTcpServer server;
  QVERIFY(server.listen(QHostAddress::LocalHost));
  bool answer = true;
  connect(&server, &QTcpServer::newConnection, [&] {
    QTcpSocket* socket = server.nextPendingConnection();
    connect(socket, &QTcpSocket::readyRead, [socket, &answer] {
      socket->readAll();
      if (answer) socket->write("HTTP/1.0 200 OK\r\nContent-Length: 4\r\n\r\n5.01");
      if (answer) socket->disconnectFromHost();
    });
  });
  QtServices services;
  services.setHttpTimeoutMs(2000);
  std::string url = "http://127.0.0.1:" + std::to_string(server.serverPort()) + "/Tolvanever.txt";
  QCOMPARE(services.httpGet(url), std::optional<std::string>("5.01"));
  answer = false;  // the server takes the request and never answers
  services.setHttpTimeoutMs(150);
  QElapsedTimer clock;
  clock.start();
  QVERIFY(!services.httpGet(url).has_value());
  QVERIFY(clock.elapsed() < 1500);
}

void QtServicesTest::commandLineIsOnePath() {
  test::TempDir dir;
  qputenv("TOLVANE_WORKDIR", QByteArray::fromStdString((dir / "work").string()));
  ProgramOptions options = programOptions({"/home/me/My", "Figures/Vicky", "2.cr2"});
  qunsetenv("TOLVANE_WORKDIR");
  QCOMPARE(options.commandLine, std::string("/home/me/My Figures/Vicky 2.cr2"));
  QCOMPARE(options.workDir, dir / "work");
  QVERIFY(std::filesystem::is_directory(dir / "work"));
  QCOMPARE(options.currentDir, std::filesystem::current_path());
  QVERIFY(programOptions({}).commandLine.empty());
}

QObject* newQtServicesTest() { return new QtServicesTest; }

#include "qt_services_test.moc"
