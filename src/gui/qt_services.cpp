#include "gui/qt_services.h"

#include <QBuffer>
#include <QImage>

#include <QApplication>
#include <QColorDialog>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <array>
#include <QLabel>
#include <QInputDialog>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QStandardPaths>
#include <QTextDocument>
#include <QThread>
#include <QTimer>

#include "program/data_folder.h"
#include "gui/qt_painter.h"
#include "gui/qt_text.h"
#include "gui/tile_close.h"
#include "text/runtime_error.h"

namespace tolvane::gui {

std::unique_ptr<QMessageBox> QtServices::makeMessageBox(const ui::Message& message, QWidget* parent) {
  using B = QMessageBox::StandardButton;
  QMessageBox::StandardButtons buttons = B::Ok;
  switch (message.buttons) {
    case ui::Buttons::OK:
      buttons = B::Ok;
      break;
    case ui::Buttons::OKCancel:
      buttons = B::Ok | B::Cancel;
      break;
    case ui::Buttons::YesNo:
      buttons = B::Yes | B::No;
      break;
    case ui::Buttons::YesNoCancel:
      buttons = B::Yes | B::No | B::Cancel;
      break;
    case ui::Buttons::AbortRetryIgnore:
      buttons = B::Abort | B::Retry | B::Ignore;
      break;
    case ui::Buttons::RetryCancel:
      buttons = B::Retry | B::Cancel;
      break;
  }
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  switch (message.icon) {
    case ui::Icon::None:
      icon = QMessageBox::NoIcon;
      break;
    case ui::Icon::Critical:
      icon = QMessageBox::Critical;
      break;
    case ui::Icon::Question:
      icon = QMessageBox::Question;
      break;
    case ui::Icon::Exclamation:
      icon = QMessageBox::Warning;
      break;
    case ui::Icon::Information:
      icon = QMessageBox::Information;
      break;
  }
  auto box = std::make_unique<QMessageBox>(icon, fromDisplayBytes(message.title), fromDisplayBytesMultiLine(message.text),
                                           buttons, parent);
  box->setTextFormat(Qt::PlainText);
  // The report keeps its number and text as they are; the sentence stands beneath them.
  QString advice = runTimeErrorAdvice(message.text);
  if (!advice.isEmpty()) box->setInformativeText(advice);
  return box;
}

QString QtServices::runTimeErrorAdvice(const std::string& messageText) {
  static const std::string kPrefix = "Run-time error '";
  if (messageText.rfind(kPrefix, 0) != 0) return {};
  int number = 0;
  std::size_t i = kPrefix.size();
  for (; i < messageText.size() && messageText[i] >= '0' && messageText[i] <= '9'; ++i)
    number = number * 10 + (messageText[i] - '0');
  if (i == kPrefix.size() || i >= messageText.size() || messageText[i] != '\'') return {};
  const char* what = nullptr;
  switch (number) {
    case text::kInvalidProcedureCall:
      what = "The command got a value it cannot use, most often because a dialog was cancelled or a "
             "path was empty; choose the file or folder and try again.";
      break;
    case text::kSubscriptOutOfRange:
    case text::kInputPastEndOfFile:
    case text::kTypeMismatch:
    case text::kOverflow:
      what = "The file did not have the form the command expects (it may be damaged or of another "
             "kind); check it in the Manual Editor or run the Bracket Checker, then try again.";
      break;
    case text::kFileNotFound:
    case text::kPathNotFound:
    case text::kBadFileName:
    case text::kBadFileNameOrNumber:
      what = "A file or folder the command needs is not there; check the path (and the Poser folder in "
             "the settings) and try again.";
      break;
    case text::kPermissionDenied:
    case text::kPathFileAccessError:
    case text::kFileAlreadyExists:
      what = "The file could not be read or written (it may be read-only, open elsewhere, or in a "
             "folder you cannot write); free it or choose another place and try again.";
      break;
    case text::kDiskFull:
    case text::kDeviceIOError:
      what = "The disk did not take the data; make room or choose another disk and try again.";
      break;
    case text::kOutOfMemory:
    case text::kOutOfStringSpace:
      what = "The command ran out of memory; close other programs or work on a smaller file.";
      break;
    case text::kCancelSelected:
      what = "The command was cancelled.";
      break;
    default:
      what = "The command could not finish.";
      break;
  }
  return QObject::tr("%1 The command was stopped; your files on disk were left as they were.")
      .arg(QObject::tr(what));
}

QWidget* QtServices::dialogParent() const {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  QWidget* active = QApplication::activeWindow();
  // A window of the program other than the main one owns the dialogs raised from it.
  if (active != nullptr && m_window != nullptr && active->window() != m_window->window()) {
    for (QWidget* w = active; w != nullptr; w = w->parentWidget())
      if (w == m_window) return active;
  }
  return m_window;
}

ui::Answer QtServices::answerOf(int standardButton) {
  switch (standardButton) {
    case QMessageBox::Ok:
      return ui::Answer::OK;
    case QMessageBox::Yes:
      return ui::Answer::Yes;
    case QMessageBox::No:
      return ui::Answer::No;
    case QMessageBox::Abort:
      return ui::Answer::Abort;
    case QMessageBox::Retry:
      return ui::Answer::Retry;
    case QMessageBox::Ignore:
      return ui::Answer::Ignore;
    default:
      return ui::Answer::Cancel;
  }
}

ui::Answer QtServices::message(const ui::Message& message) {
  auto box = makeMessageBox(message, dialogParent());
  QApplication::restoreOverrideCursor();
  int result = box->exec();
  if (m_busy) QApplication::setOverrideCursor(Qt::WaitCursor);
  // Closing a box with Escape or the title bar counts as its Cancel or its only button.
  if (result == QMessageBox::NoButton || box->clickedButton() == nullptr)
    return message.buttons == ui::Buttons::OK ? ui::Answer::OK : ui::Answer::Cancel;
  return answerOf(box->standardButton(box->clickedButton()));
}

QString QtServices::dialogFilter(const std::string& filter) {
  QString text = fromBytes(filter);
  if (!text.contains('|')) return text;
  QStringList parts = text.split('|');
  QStringList out;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString patterns = parts[i + 1];
    patterns.replace(';', ' ');
    out << parts[i] + " (" + patterns + ")";
  }
  return out.join(";;");
}

namespace {
// The Poser chooser of the first start says what to pick and why.
void explainPoserChooser(QFileDialog& dialog) {
  dialog.setWindowTitle(QObject::tr("Find the Poser program"));
  dialog.setNameFilters({QObject::tr("Poser program (Poser.exe poser.exe Poser*.exe)"), QObject::tr("All files (*)")});
  const QString sentence = QObject::tr(
      "Choose the Poser program (Poser.exe). Tolvane takes its folder as the Poser folder, the one that "
      "holds Runtime\\Geometries and Runtime\\textures, to find the geometry and maps of your figures.");
  dialog.setToolTip(sentence);
  if (auto* grid = qobject_cast<QGridLayout*>(dialog.layout())) {
    auto* label = new QLabel(sentence, &dialog);
    label->setObjectName("DialogSentence");
    label->setWordWrap(true);
    // Above the dialog's own rows.
    QList<QLayoutItem*> items;
    QList<std::array<int, 4>> places;
    while (grid->count() > 0) {
      int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
      grid->getItemPosition(0, &row, &column, &rowSpan, &columnSpan);
      places.append({row + 1, column, rowSpan, columnSpan});
      items.append(grid->takeAt(0));
    }
    grid->addWidget(label, 0, 0, 1, grid->columnCount());
    for (qsizetype i = 0; i < items.size(); ++i)
      grid->addItem(items[i], places[i][0], places[i][1], places[i][2], places[i][3]);
  }
}

// The path that the tool proposed, as the dialog would give it back.
QString proposedPath(const ui::FileDialogRequest& request) {
  if (request.fileName.empty()) return {};
  QFileInfo proposed(fromPathText(request.fileName));
  if (proposed.isRelative()) proposed = QFileInfo(QDir(fromPath(request.startFolder)), proposed.filePath());
  return QDir::cleanPath(proposed.absoluteFilePath());
}
}  // namespace

bool QtServices::asksBeforeReplacing(const ui::FileDialogRequest& request, const QString& chosen) {
  return request.kind == ui::FileDialogRequest::Kind::Save && QFileInfo::exists(chosen) &&
         QDir::cleanPath(QFileInfo(chosen).absoluteFilePath()) != proposedPath(request);
}

std::optional<std::string> QtServices::fileDialog(const ui::FileDialogRequest& request) {
  bool open = request.kind == ui::FileDialogRequest::Kind::Open;
  QString title = fromBytes(request.title);
  if (title.isEmpty()) title = open ? QObject::tr("Open") : QObject::tr("Save As");
  QFileDialog dialog(dialogParent(), title, fromPath(request.startFolder));
  dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  // Replacing the file the tool proposed is the tool's own question; another existing
  // file is asked about here, as a save dialog does.
  dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
  if (!request.filter.empty()) dialog.setNameFilter(dialogFilter(request.filter));
  if (!request.fileName.empty()) dialog.selectFile(fromPathText(request.fileName));
  if (m_starting && open && request.title.empty() && request.filter.empty()) explainPoserChooser(dialog);
  QApplication::restoreOverrideCursor();
  std::optional<std::string> chosen;
  while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
    QString path = dialog.selectedFiles().first();
    if (asksBeforeReplacing(request, path)) {
      QMessageBox ask(QMessageBox::Warning, title,
                      QObject::tr("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(path).fileName()),
                      QMessageBox::Yes | QMessageBox::No, &dialog);
      ask.setObjectName("ConfirmReplace");
      ask.setDefaultButton(QMessageBox::No);
      if (ask.exec() != QMessageBox::Yes) continue;
    }
    chosen = toPathText(QDir::toNativeSeparators(path));
    break;
  }
  if (m_busy) QApplication::setOverrideCursor(Qt::WaitCursor);
  return chosen;
}

std::optional<std::string> QtServices::inputLine(const std::string& prompt, const std::string& title,
                                                 const std::string& initial) {
  bool ok = false;
  QString text = QInputDialog::getText(dialogParent(), fromBytes(title), fromBytesMultiLine(prompt),
                                       QLineEdit::Normal, fromBytes(initial), &ok);
  if (!ok) return std::nullopt;
  return toBytes(text);
}

std::optional<ui::Colour> QtServices::chooseColour(ui::Colour initial) {
  QColor chosen = QColorDialog::getColor(toQColor(initial), dialogParent());
  if (!chosen.isValid()) return std::nullopt;
  return fromQColor(chosen);
}

void QtServices::printText(QPrinter& printer, const ui::PrintJob& job) {
  QTextDocument document;
  QFont font(fromBytes(job.fontFamily), job.fontSize);
  font.setStyleHint(QFont::TypeWriter);
  font.setFixedPitch(true);
  document.setDefaultFont(font);
  document.setPlainText(fromBytesMultiLine(job.text));
  if (!job.title.empty()) printer.setDocName(fromBytes(job.title));
  document.print(&printer);
}

bool QtServices::print(const ui::PrintJob& job) {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, dialogParent());
  if (!job.title.empty()) dialog.setWindowTitle(fromBytes(job.title));
  if (dialog.exec() != QDialog::Accepted) return false;
  printText(printer, job);
  return true;
}

void QtServices::beep() { QApplication::beep(); }

void QtServices::setBusy(bool busy) {
  if (busy == m_busy) return;
  m_busy = busy;
  if (busy)
    QApplication::setOverrideCursor(Qt::WaitCursor);
  else
    while (QApplication::overrideCursor() != nullptr) QApplication::restoreOverrideCursor();
}

namespace {
// Holds back the user's clicks, keys and drops while a job lets the event loop run for
// its own sake: the windows paint, the timers run and the progress moves, but nothing
// starts a second tool or opens a file on top of the running one. A dialog the job
// itself shows (a question from a timer's handler) still takes its input.
class InputGate : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!isUserInput(event->type())) return false;
    QWidget* modal = QApplication::activeModalWidget();
    auto* widget = qobject_cast<QWidget*>(watched);
    return modal == nullptr || widget == nullptr || (widget != modal && !modal->isAncestorOf(widget));
  }

 private:
  static bool isUserInput(QEvent::Type type) {
    switch (type) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::ShortcutOverride:
      case QEvent::Shortcut:
      case QEvent::Wheel:
      case QEvent::ContextMenu:
      case QEvent::DragEnter:
      case QEvent::DragMove:
      case QEvent::Drop:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
        return true;
      default:
        return false;
    }
  }
};
}  // namespace

void QtServices::yield() { QCoreApplication::processEvents(QEventLoop::AllEvents, 50); }

void QtServices::yieldHoldingInput() {
  InputGate gate;
  qApp->installEventFilter(&gate);
  QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
  qApp->removeEventFilter(&gate);
}

void QtServices::playSound(const std::filesystem::path& file) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(file, ec)) return;
  for (const char* player : {"paplay", "aplay"}) {
    QString exe = QStandardPaths::findExecutable(player);
    if (exe.isEmpty()) continue;
    QProcess::startDetached(exe, {fromPath(file)});
    return;
  }
}

bool QtServices::startProcess(const std::string& program, const std::vector<std::string>& args) {
  QStringList arguments;
  for (const std::string& a : args) arguments << fromPathText(a);
  QString exe = fromPathText(program);
  if (exe.endsWith(".exe", Qt::CaseInsensitive)) {
    QString wine = QStandardPaths::findExecutable("wine");
    if (wine.isEmpty()) return false;
    arguments.prepend(exe);
    exe = wine;
  }
  return QProcess::startDetached(exe, arguments);
}

std::optional<std::string> QtServices::httpGet(const std::string& url) {
  QNetworkAccessManager manager;
  QNetworkReply* reply = manager.get(QNetworkRequest(QUrl(fromPathText(url))));
  QEventLoop loop;
  QTimer timer;
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
  QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
  // A text file of this kind is small: an answer that grows past the limit is no such
  // file, and the fetch stops rather than fill the memory.
  bool tooLarge = false;
  QObject::connect(reply, &QNetworkReply::downloadProgress, &loop, [&](qint64 received, qint64) {
    if (received <= kHttpLargestBody) return;
    tooLarge = true;
    loop.quit();
  });
  timer.start(m_httpTimeoutMs);
  if (!reply->isFinished()) loop.exec();
  std::optional<std::string> body;
  if (!tooLarge && reply->isFinished() && reply->error() == QNetworkReply::NoError)
    body = reply->readAll().toStdString();
  reply->abort();
  reply->deleteLater();
  return body;
}

void QtServices::tileClose() {
  if (m_window != nullptr && m_window->isVisible()) paintTileClose(*m_window);
}

std::filesystem::path QtServices::systemFolder() {
  QString folder = qEnvironmentVariable("TOLVANE_SYSTEMDIR");
  if (folder.isEmpty())
    return runtimeDataFolder(std::filesystem::path(toPathText(QCoreApplication::applicationDirPath())));
  return std::filesystem::path(toPathText(folder));
}

std::chrono::system_clock::time_point QtServices::now() { return std::chrono::system_clock::now(); }

std::unique_ptr<ui::PicturePainter> QtServices::painter(ui::Raster& raster) { return qtPainter(raster); }

// The picture's pixels through Qt's smooth stretch and its BMP writer; the caller writes
// the bytes to disk through its own crash-safe step.
std::string QtServices::encodeBitmap(const ui::Raster& raster, int width, int height) {
  if (width <= 0 || height <= 0) return {};
  QImage image(reinterpret_cast<const uchar*>(raster.data()), raster.width(), raster.height(),
               raster.width() * 4, QImage::Format_RGB32);
  QImage stretched = image.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!stretched.save(&buffer, "BMP")) return ui::bitmapBytes(raster, width, height);
  return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

bool QtServices::loadPicture(const std::filesystem::path& file, ui::Raster& raster) {
  QImage image;
  if (!image.load(QString::fromStdString(file.string()))) return false;
  QImage scaled = image.scaled(raster.width(), raster.height(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                      .convertToFormat(QImage::Format_RGB32);
  for (int y = 0; y < raster.height(); ++y) {
    const auto* line = reinterpret_cast<const std::uint32_t*>(scaled.constScanLine(y));
    for (int x = 0; x < raster.width(); ++x) raster.setPixel(x, y, line[x] | 0xFF000000u);
  }
  return true;
}

}  // namespace tolvane::gui
