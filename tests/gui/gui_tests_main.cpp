// Runs the GUI test classes; offscreen unless the environment chose a platform. Named
// test functions on the command line run only in the classes that have them.
#include <QApplication>
#include <QTest>
#include <memory>

QObject* newMainWindowTest();
QObject* newBindingTest();
QObject* newQtServicesTest();
QObject* newMorphDragTest();
QObject* newErcWindowTest();
QObject* newWindowTest();

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QStringList functions;
  for (int i = 1; i < argc; ++i)
    if (argv[i][0] != '-') functions << QString::fromLocal8Bit(argv[i]) + "()";
  std::unique_ptr<QObject> tests[] = {
      std::unique_ptr<QObject>(newMainWindowTest()), std::unique_ptr<QObject>(newBindingTest()),
      std::unique_ptr<QObject>(newQtServicesTest()), std::unique_ptr<QObject>(newMorphDragTest()),
      std::unique_ptr<QObject>(newErcWindowTest()), std::unique_ptr<QObject>(newWindowTest())};
  int failed = 0;
  for (const auto& test : tests) {
    bool named = functions.isEmpty();
    for (const QString& f : functions) named = named || test->metaObject()->indexOfMethod(f.toLatin1()) >= 0;
    if (named) failed += QTest::qExec(test.get(), argc, argv);
  }
  return failed;
}
