// A program state for the fuzz targets above the figure-text library: services that
// answer every prompt at once, without a script, an in-memory settings store, and a
// Work folder and current directory inside a folder of the target's.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "program/program.h"
#include "ui/settings.h"

namespace tolvane::fuzz {

// A user who takes the agreeing button of every message box (OK, Yes, Ignore), or with
// `agree` false the refusing one (Cancel, No, Abort); never Retry, which may ask again
// for ever. Every open dialog chooses `openFile`; save dialogs, typed lines, colours and
// prints are cancelled.
class AnsweringServices : public ui::Services {
 public:
  bool agree = true;
  std::string openFile;
  std::vector<ui::Message> messages;

  ui::Answer message(const ui::Message& message) override;
  std::optional<std::string> fileDialog(const ui::FileDialogRequest& request) override;
  std::optional<std::string> inputLine(const std::string&, const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<ui::Colour> chooseColour(ui::Colour) override { return std::nullopt; }
  bool print(const ui::PrintJob&) override { return false; }
  void beep() override {}
  void setBusy(bool) override {}
  void yield() override {}
  void playSound(const std::filesystem::path&) override {}
  bool startProcess(const std::string&, const std::vector<std::string>&) override { return false; }
  std::optional<std::string> httpGet(const std::string&) override { return std::nullopt; }
  void tileClose() override {}
  std::filesystem::path systemFolder() override { return {}; }
  std::chrono::system_clock::time_point now() override { return {}; }
};

// The program with its Work folder in `folder`/work and its current directory, which is
// also its Poser folder, in `folder`/files; both folders are made.
struct FuzzProgram {
  explicit FuzzProgram(const std::filesystem::path& folder);
  std::filesystem::path files() const { return program.currentDir; }

  AnsweringServices services;
  ui::MemorySettings settings;
  Program program;
};

}  // namespace tolvane::fuzz
