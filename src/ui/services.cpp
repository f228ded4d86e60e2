#include "ui/services.h"

namespace tolvane::ui {

Answer msgBox(Services& services, const std::string& text, const std::string& title, Buttons buttons,
              Icon icon) {
  return services.message(Message{text, title, buttons, icon});
}

std::optional<std::string> openDialog(Services& services, const std::filesystem::path& startFolder,
                                      const std::string& title, const std::string& fileName) {
  FileDialogRequest request;
  request.kind = FileDialogRequest::Kind::Open;
  request.title = title;
  request.startFolder = startFolder;
  request.fileName = fileName;
  return services.fileDialog(request);
}

std::optional<std::string> saveDialog(Services& services, const std::filesystem::path& startFolder,
                                      const std::string& fileName, const std::string& title) {
  FileDialogRequest request;
  request.kind = FileDialogRequest::Kind::Save;
  request.title = title;
  request.startFolder = startFolder;
  request.fileName = fileName;
  return services.fileDialog(request);
}

const char* answerName(Answer answer) {
  switch (answer) {
    case Answer::OK: return "OK";
    case Answer::Cancel: return "Cancel";
    case Answer::Yes: return "Yes";
    case Answer::No: return "No";
    case Answer::Abort: return "Abort";
    case Answer::Retry: return "Retry";
    case Answer::Ignore: return "Ignore";
  }
  return "?";
}

const char* buttonsName(Buttons buttons) {
  switch (buttons) {
    case Buttons::OK: return "OK";
    case Buttons::OKCancel: return "OK Cancel";
    case Buttons::YesNo: return "Yes No";
    case Buttons::YesNoCancel: return "Yes No Cancel";
    case Buttons::AbortRetryIgnore: return "Abort Retry Ignore";
    case Buttons::RetryCancel: return "Retry Cancel";
  }
  return "?";
}

}  // namespace tolvane::ui
