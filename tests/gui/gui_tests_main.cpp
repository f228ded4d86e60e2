// Runs every GUI test class; offscreen unless the environment chose a platform.
#include <QApplication>

int runMainWindowTests(int argc, char** argv);
int runBindingTests(int argc, char** argv);
int runQtServicesTests(int argc, char** argv);

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  int failed = 0;
  failed += runMainWindowTests(argc, argv);
  failed += runBindingTests(argc, argv);
  failed += runQtServicesTests(argc, argv);
  return failed;
}
