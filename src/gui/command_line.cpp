#include "gui/command_line.h"

#include <QCommandLineParser>

namespace tolvane::gui {

namespace {
void hide(QCommandLineParser& parser, QCommandLineOption option) {
  option.setFlags(QCommandLineOption::HiddenFromHelp);
  parser.addOption(option);
}
}  // namespace

CommandLine parseCommandLine(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Tolvane, a workbench for Poser figure files (CR2, PZ2, PZ3, HR2, PP2, FC2, "
      "their compressed kinds, and OBJ).");
  QCommandLineOption help({"h", "help"}, "Show this help and exit.");
  QCommandLineOption version({"v", "version"}, "Show the version and exit.");
  parser.addOption(help);
  parser.addOption(version);
  // Qt's own options (-platform offscreen, -style fusion, ...) pass to the application.
  parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
  for (const char* name :
       {"platform", "platformpluginpath", "platformtheme", "plugin", "qwindowgeometry", "qwindowicon",
        "qwindowtitle", "display", "geometry", "style", "stylesheet", "session"})
    hide(parser, QCommandLineOption(name, "", "value"));
  for (const char* name : {"reverse", "widgetcount", "nograb", "dograb", "sync"})
    hide(parser, QCommandLineOption(name));
  parser.addPositionalArgument("FILE", "A figure, pose, scene, hair, prop or OBJ file to open.", "[FILE]");
  CommandLine result;
  const QString exe = "tolvane";
  if (!parser.parse(arguments)) {
    result.action = CommandLine::Action::Error;
    result.output = (exe + ": " + parser.errorText() + "\nTry 'tolvane --help' for more.\n").toStdString();
  } else if (parser.isSet(help)) {
    result.action = CommandLine::Action::Help;
    // Without an application object the parser cannot name the program itself.
    result.output = parser.helpText().replace("<executable_name>", exe).toStdString();
  } else if (parser.isSet(version)) {
    result.action = CommandLine::Action::Version;
    result.output = std::string("tolvane ") + TOLVANE_VERSION + "\n";
  }
  result.files = parser.positionalArguments();
  return result;
}

}  // namespace tolvane::gui
