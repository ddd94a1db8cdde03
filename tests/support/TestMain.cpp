// Shared main() of every test binary: the whole process runs with HOME, XDG_* and TMPDIR
// in a temporary folder that goes when it ends, and Qt on the offscreen platform unless
// told otherwise.
#include "TestHome.h"

#include <gtest/gtest.h>

#ifdef QB_TEST_GUI
#include <QApplication>
using QBTestApplication = QApplication;
#else
#include <QCoreApplication>
using QBTestApplication = QCoreApplication;
#endif

#include <cstdlib>

int main(int argc, char** argv)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    installProcessTestHome();
    QBTestApplication application(argc, argv);
    QBTestApplication::setApplicationName(QStringLiteral("quillbox2-tests"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
