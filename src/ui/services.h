// What the tools ask of the user and the platform: message boxes, file dialogs, a typed
// line, a colour, a printer, sounds, outside programs, HTTP, the busy pointer and the
// event loop. The GUI implements it with real dialogs; tests and the script runner with
// ScriptedServices.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/controls.h"
#include "ui/raster.h"

namespace tolvane::ui {

enum class Buttons { OK, OKCancel, YesNo, YesNoCancel, AbortRetryIgnore, RetryCancel };
enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Answer { OK, Cancel, Yes, No, Abort, Retry, Ignore };

struct Message {
  std::string text;
  std::string title;
  Buttons buttons = Buttons::OK;
  Icon icon = Icon::None;
};

struct FileDialogRequest {
  enum class Kind { Open, Save } kind = Kind::Open;
  std::string title;
  std::string filter;                   // empty: no filter
  std::filesystem::path startFolder;    // the program's current directory as a rule
  std::string fileName;                 // proposed name
};

struct PrintJob {
  std::string title;
  std::string text;                     // lines separated by CR LF or LF
  std::string fontFamily = "Courier";
  int fontSize = 10;
};

class Services {
 public:
  virtual ~Services() = default;

  virtual Answer message(const Message& message) = 0;
  // The chosen path, or nothing on cancel.
  virtual std::optional<std::string> fileDialog(const FileDialogRequest& request) = 0;
  // A typed line ended by Enter, or nothing when the user cancels.
  virtual std::optional<std::string> inputLine(const std::string& prompt, const std::string& title,
                                               const std::string& initial) = 0;
  virtual std::optional<Colour> chooseColour(Colour initial) = 0;
  // Shows the print dialog and prints; false when the user cancels.
  virtual bool print(const PrintJob& job) = 0;

  virtual void beep() = 0;
  virtual void setBusy(bool busy) = 0;
  // Lets the event loop run: repaint, timers, keys the tools listen for.
  virtual void yield() = 0;
  // Lets the event loop run for a job's own sake (repaint, timers, the progress shown)
  // while the user's clicks and keys wait, so that no second command starts on top of
  // the running one. A plain yield unless the front end can hold input back.
  virtual void yieldHoldingInput() { yield(); }
  // How far the running job is: `done` of `total` bytes (a total of 0: not known). Told
  // by time, about every 100 ms of a long job, right before a yield; the front end may
  // show it while the job is busy. Nothing by default.
  virtual void progress(std::uint64_t /*done*/, std::uint64_t /*total*/) {}
  // Plays a sound file without waiting; a missing file is ignored.
  virtual void playSound(const std::filesystem::path& file) = 0;
  // Starts an outside program without waiting; false when it cannot be started.
  virtual bool startProcess(const std::string& program, const std::vector<std::string>& args) = 0;
  // Fetches a text over HTTP; nothing on failure.
  virtual std::optional<std::string> httpGet(const std::string& url) = 0;
  // The closing effect of the main form: fill it with the tile picture, row by row.
  virtual void tileClose() = 0;
  // The operating system's folder where the exit sound lies.
  virtual std::filesystem::path systemFolder() = 0;
  virtual std::chrono::system_clock::time_point now() = 0;
  // The painter that draws into a picture's pixels: the software painter, unless the
  // front end paints with its own engine.
  virtual std::unique_ptr<PicturePainter> painter(Raster& raster) { return softwarePainter(raster); }
  // The bytes of a bitmap (BMP) file of the picture drawn stretched to width x height:
  // the software stretch unless the front end has its own image writer.
  virtual std::string encodeBitmap(const Raster& raster, int width, int height) {
    return bitmapBytes(raster, width, height);
  }
  // Draws the picture file stretched over the raster; false when it cannot be read.
  // Without an image reader nothing is drawn.
  virtual bool loadPicture(const std::filesystem::path&, Raster&) { return false; }
};

// Shorthand for a message box.
Answer msgBox(Services& services, const std::string& text, const std::string& title,
              Buttons buttons = Buttons::OK, Icon icon = Icon::None);

// Shows an open or save dialog starting in `startFolder`.
std::optional<std::string> openDialog(Services& services, const std::filesystem::path& startFolder,
                                      const std::string& title = {}, const std::string& fileName = {});
std::optional<std::string> saveDialog(Services& services, const std::filesystem::path& startFolder,
                                      const std::string& fileName, const std::string& title = {});

const char* answerName(Answer answer);
const char* buttonsName(Buttons buttons);

}  // namespace tolvane::ui
