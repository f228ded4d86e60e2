// Runs the GUI test classes; offscreen unless the environment chose a platform. Named
// test functions on the command line run only in the classes that have them.
#include <QApplication>
#include <QTest>
#include <memory>
#include <vector>

QObject* newMainWindowTest();
QObject* newBindingTest();
QObject* newQtServicesTest();
QObject* newMorphDragTest();

namespace {
bool hasAnyOf(const QObject& test, const QStringList& functions) {
  for (const QString& f : functions)
    if (test.metaObject()->indexOfMethod((f + "()").toLatin1()) >= 0) return true;
  return false;
}
}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QStringList functions;
  for (int i = 1; i < argc; ++i)
    if (argv[i][0] != '-') functions << QString::fromLocal8Bit(argv[i]);
  std::vector<std::unique_ptr<QObject>> tests;
  tests.emplace_back(newMainWindowTest());
  tests.emplace_back(newBindingTest());
  tests.emplace_back(newQtServicesTest());
  tests.emplace_back(newMorphDragTest());
  int failed = 0;
  for (const auto& test : tests)
    if (functions.isEmpty() || hasAnyOf(*test, functions)) failed += QTest::qExec(test.get(), argc, argv);
  return failed;
}
