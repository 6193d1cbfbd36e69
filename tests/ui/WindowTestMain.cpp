#include <QApplication>
#include <gtest/gtest.h>

#include "print/FormFonts.h"
#include "ui/frame/FaultTrap.h"

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    zw::TrappingApplication application(argc, argv);
    zw::installFontSubstitutes();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
