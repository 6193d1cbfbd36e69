#include <QApplication>
#include <gtest/gtest.h>

#include "print/FormFonts.h"

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    zw::installFontSubstitutes();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
