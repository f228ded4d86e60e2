// The Services of the desktop program: Qt's message boxes and dialogs, the printer,
// sounds and outside programs started without waiting, HTTP with a time limit, the busy
// pointer, and the closing effect painted over the main window.
#pragma once

#include <QMessageBox>
#include <QPointer>
#include <QWidget>
#include <memory>

#include "ui/services.h"

class QPrinter;

namespace tolvane::gui {

class QtServices : public ui::Services {
 public:
  QtServices() = default;

  // The window the dialogs belong to and the closing effect paints.
  void setWindow(QWidget* window) { m_window = window; }
  void setHttpTimeoutMs(int ms) { m_httpTimeoutMs = ms; }
  // While the program starts, an open dialog without title or filter is the question
  // for the Poser program: it then says what to pick and why, with a filter of its own.
  void setStarting(bool starting) { m_starting = starting; }

  ui::Answer message(const ui::Message& message) override;
  std::optional<std::string> fileDialog(const ui::FileDialogRequest& request) override;
  std::optional<std::string> inputLine(const std::string& prompt, const std::string& title,
                                       const std::string& initial) override;
  std::optional<ui::Colour> chooseColour(ui::Colour initial) override;
  bool print(const ui::PrintJob& job) override;
  void beep() override;
  void setBusy(bool busy) override;
  void yield() override;
  void yieldHoldingInput() override;
  void playSound(const std::filesystem::path& file) override;
  bool startProcess(const std::string& program, const std::vector<std::string>& args) override;
  std::optional<std::string> httpGet(const std::string& url) override;
  void tileClose() override;
  std::filesystem::path systemFolder() override;
  std::chrono::system_clock::time_point now() override;
  // The still pictures are drawn with QPainter.
  std::unique_ptr<ui::PicturePainter> painter(ui::Raster& raster) override;
  std::string encodeBitmap(const ui::Raster& raster, int width, int height) override;
  bool loadPicture(const std::filesystem::path& file, ui::Raster& raster) override;

  // The message box as it is shown: title, text, buttons and icon of the request.
  static std::unique_ptr<QMessageBox> makeMessageBox(const ui::Message& message, QWidget* parent);
  static ui::Answer answerOf(int standardButton);
  // Prints the job's text in its fixed font on a printer that is already set up.
  static void printText(QPrinter& printer, const ui::PrintJob& job);
  // Turns "Text files|*.txt|All|*.*" into Qt's filter form; other text stays as it is.
  static QString dialogFilter(const std::string& filter);
  // Whether a save dialog asks before `chosen` is taken: it exists and is not the file
  // the tool proposed (that one is the tool's own question).
  static bool asksBeforeReplacing(const ui::FileDialogRequest& request, const QString& chosen);
  // The plain sentence shown under a run-time error report ("Run-time error 'N':" and
  // the error's text): what happened and what the user can do. Empty for other messages.
  static QString runTimeErrorAdvice(const std::string& messageText);
  // The window a dialog belongs to: the active modal dialog or window of the program
  // (the editor, the notebook, ...), else the main window.
  QWidget* dialogParent() const;

 private:
  QPointer<QWidget> m_window;
  bool m_busy = false;
  bool m_starting = false;
  int m_httpTimeoutMs = 10000;
  static constexpr qint64 kHttpLargestBody = 1 << 20;
};

}  // namespace tolvane::gui
