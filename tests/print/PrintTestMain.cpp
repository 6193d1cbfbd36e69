#include <QGuiApplication>
#include <gtest/gtest.h>

#include "print/FormFonts.h"

// Drawing text needs the font database of a running application.
int main(int argc, char** argv)
{
    // Test discovery runs the program without the test environment.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    zw::installFontSubstitutes();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
