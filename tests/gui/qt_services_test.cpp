// The Qt side of Services and Settings: what a message box request turns into and the
// answer the user's button gives, printing, outside programs, and the settings store.
#include "gui/qt_services.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
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

#include "core/runtime_error.h"
#include "gui/app_setup.h"
#include "gui/qt_settings.h"
#include "test_support.h"

using namespace tolvane;
using namespace tolvane::gui;

class QtServicesTest : public QObject {
  Q_OBJECT
 private slots:
  void messageBoxShowsTheRequest();
  void pressedButtonIsTheAnswer();
  void printsTextToPdf();
  void dialogFilterTakesTheBarForm();
  void windowsProgramsNeedWine();
  void settingsRoundTripAndUnwritableStore();
  void fileDialogStartsInTheFolderWithTheName();
  void httpGetFetchesOrTimesOut();
  void commandLineIsOnePath();
};

void QtServicesTest::messageBoxShowsTheRequest() {
  using B = QMessageBox::StandardButton;
  struct Case {
    ui::Buttons buttons;
    ui::Icon icon;
    QMessageBox::StandardButtons qtButtons;
    QMessageBox::Icon qtIcon;
  };
  const Case cases[] = {
      {ui::Buttons::OK, ui::Icon::None, B::Ok, QMessageBox::NoIcon},
      {ui::Buttons::OKCancel, ui::Icon::Exclamation, B::Ok | B::Cancel, QMessageBox::Warning},
      {ui::Buttons::YesNo, ui::Icon::Question, B::Yes | B::No, QMessageBox::Question},
      {ui::Buttons::YesNoCancel, ui::Icon::Information, B::Yes | B::No | B::Cancel, QMessageBox::Information},
      {ui::Buttons::AbortRetryIgnore, ui::Icon::Critical, B::Abort | B::Retry | B::Ignore,
       QMessageBox::Critical},
      {ui::Buttons::RetryCancel, ui::Icon::Critical, B::Retry | B::Cancel, QMessageBox::Critical},
  };
  for (const Case& c : cases) {
    ui::Message m{"Save path changes before exit?\r\nSecond line \x93quoted\x94", "Alert!", c.buttons,
                  c.icon};
    auto box = QtServices::makeMessageBox(m, nullptr);
    QCOMPARE(box->windowTitle(), QString("Alert!"));
    QCOMPARE(box->text(), QString::fromUtf8("Save path changes before exit?\nSecond line “quoted”"));
    QCOMPARE(box->standardButtons(), c.qtButtons);
    QCOMPARE(box->icon(), c.qtIcon);
  }
}

void QtServicesTest::pressedButtonIsTheAnswer() {
  struct Case {
    ui::Buttons buttons;
    QMessageBox::StandardButton press;
    ui::Answer answer;
  };
  const Case cases[] = {
      {ui::Buttons::YesNo, QMessageBox::No, ui::Answer::No},
      {ui::Buttons::YesNo, QMessageBox::Yes, ui::Answer::Yes},
      {ui::Buttons::OKCancel, QMessageBox::Cancel, ui::Answer::Cancel},
      {ui::Buttons::AbortRetryIgnore, QMessageBox::Retry, ui::Answer::Retry},
      {ui::Buttons::OK, QMessageBox::Ok, ui::Answer::OK},
  };
  QtServices services;
  for (const Case& c : cases) {
    QTimer::singleShot(10, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box != nullptr) box->button(c.press)->click();
    });
    QCOMPARE(services.message({"Question?", "Confirm!", c.buttons, ui::Icon::Question}), c.answer);
  }
}

void QtServicesTest::printsTextToPdf() {
  test::TempDir dir;
  QString pdf = QString::fromStdString((dir / "listing.pdf").string());
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(pdf);
  ui::PrintJob job{"Inventory", "Runtime\\Geometries\\Vicky.obj\r\nRuntime\\textures\\skin.jpg\r\n",
                   "Courier", 10};
  QtServices::printText(printer, job);
  QFile file(pdf);
  QVERIFY(file.open(QIODevice::ReadOnly));
  QByteArray head = file.read(5);
  QCOMPARE(head, QByteArray("%PDF-"));
  QVERIFY(file.size() > 500);
}

void QtServicesTest::dialogFilterTakesTheBarForm() {
  QCOMPARE(QtServices::dialogFilter(""), QString());
  QCOMPARE(QtServices::dialogFilter("Figures|*.cr2|All files|*.*"),
           QString("Figures (*.cr2);;All files (*.*)"));
  QCOMPARE(QtServices::dialogFilter("Poses|*.pz2;*.fc2"), QString("Poses (*.pz2 *.fc2)"));
  QCOMPARE(QtServices::dialogFilter("Images (*.bmp)"), QString("Images (*.bmp)"));
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
    QCOMPARE(settings.get("Tolvane", "Startup", "PLoc", "0"), std::string("0"));
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
  bool threw = false;
  try {
    blocked.save("Tolvane", "Startup", "Ver", "5.0");
  } catch (const core::RuntimeError&) {
    threw = true;
  }
  QVERIFY(threw);
}

void QtServicesTest::fileDialogStartsInTheFolderWithTheName() {
  test::TempDir dir;
  QtServices services;
  ui::FileDialogRequest request;
  request.kind = ui::FileDialogRequest::Kind::Save;
  request.startFolder = dir.path();
  request.fileName = "Vicky.cr2";
  QString seenFolder, seenFile;
  QTimer::singleShot(20, [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    seenFolder = dialog->directory().absolutePath();
    seenFile = dialog->selectedFiles().value(0);
    static_cast<QDialog*>(dialog)->accept();
  });
  auto chosen = services.fileDialog(request);
  QCOMPARE(seenFolder, QDir(QString::fromStdString(dir.path().string())).absolutePath());
  QVERIFY(seenFile.endsWith("/Vicky.cr2"));
  QVERIFY(chosen.has_value());
  QCOMPARE(*chosen, (dir / "Vicky.cr2").string());

  QTimer::singleShot(20, [] {
    if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) dialog->reject();
  });
  request.kind = ui::FileDialogRequest::Kind::Open;
  QVERIFY(!services.fileDialog(request).has_value());
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
