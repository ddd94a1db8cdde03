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

#include <langinfo.h>

#include <clocale>
#include <cstdlib>
#include <cstring>

int main(int argc, char** argv)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    // Qt needs a UTF-8 locale and switches a system without one (a minimal installation
    // with no LANG) to C.UTF-8 itself, with a warning on standard error at every start, of
    // the tests and of the programs they start and whose output they compare. The tests
    // take that locale at once, for themselves and those programs.
    if (std::setlocale(LC_ALL, "") == nullptr ||
        std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0) {
        ::setenv(std::getenv("LC_ALL") ? "LC_ALL" : "LC_CTYPE", "C.UTF-8", 1);
    }
    installProcessTestHome();
    QBTestApplication application(argc, argv);
    QBTestApplication::setApplicationName(QStringLiteral("quillbox2-tests"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
