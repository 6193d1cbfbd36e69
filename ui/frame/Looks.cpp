#include "ui/frame/Looks.h"

#include "app/LookChoices.h"

namespace zw {

QString menuDesignStyleSheet(int styleNumber)
{
    switch (static_cast<MenuDesign>(styleNumber)) {
    case MenuDesign::XP:
        return "QMenuBar { background: #ece9d8; border-bottom: 1px solid #aca899; }"
               "QMenuBar::item { padding: 3px 8px; background: transparent; }"
               "QMenuBar::item:selected { background: #316ac5; color: white; }"
               "QMenu { background: white; border: 1px solid #8a867a; }"
               "QMenu::item { padding: 4px 24px 4px 26px; }"
               "QMenu::item:selected { background: #316ac5; color: white; }"
               "QMenu::separator { height: 1px; background: #aca899; margin: 3px 2px; }";
    case MenuDesign::Office2003:
        return "QMenuBar { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #e3effe, stop:1 #9ebfee);"
               " border-bottom: 1px solid #6a8ccb; }"
               "QMenuBar::item { padding: 3px 8px; background: transparent; }"
               "QMenuBar::item:selected { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #fff5cc,"
               " stop:1 #ffd28d); border: 1px solid #000080; }"
               "QMenu { background: qlineargradient(x1:0, y1:0, x2:1, y2:0, stop:0 #c4daf9, stop:0.1 #c4daf9,"
               " stop:0.1001 #fcfcf9, stop:1 #fcfcf9); border: 1px solid #002d96; }"
               "QMenu::item { padding: 4px 24px 4px 30px; }"
               "QMenu::item:selected { background: #ffeec2; border: 1px solid #000080; color: black; }"
               "QMenu::separator { height: 1px; background: #6a8ccb; margin: 3px 2px 3px 30px; }";
    case MenuDesign::Office2007:
        return "QMenuBar { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #dfe9f5, stop:0.5 #c9d9ed,"
               " stop:1 #b7cbe6); border-bottom: 1px solid #8db2e3; color: #15428b; }"
               "QMenuBar::item { padding: 3px 9px; background: transparent; border-radius: 3px; }"
               "QMenuBar::item:selected { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #fffadc,"
               " stop:0.5 #ffe68c, stop:1 #ffd65a); border: 1px solid #c2a24b; }"
               "QMenu { background: #fafafa; border: 1px solid #868686; }"
               "QMenu::item { padding: 5px 24px 5px 28px; border-radius: 3px; margin: 1px 2px; }"
               "QMenu::item:selected { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #fff9dd,"
               " stop:1 #ffe08f); border: 1px solid #e5c365; color: black; }"
               "QMenu::separator { height: 1px; background: #c5c5c5; margin: 3px 2px 3px 28px; }";
    case MenuDesign::VisualStudio2005:
        return "QMenuBar { background: qlineargradient(x1:0, y1:0, x2:1, y2:0, stop:0 #fbfaf6, stop:1 #e5e1d2);"
               " border-bottom: 1px solid #c5c2b8; }"
               "QMenuBar::item { padding: 3px 8px; background: transparent; }"
               "QMenuBar::item:selected { background: #c1d2ee; border: 1px solid #316ac5; }"
               "QMenu { background: qlineargradient(x1:0, y1:0, x2:1, y2:0, stop:0 #efede2, stop:0.1 #efede2,"
               " stop:0.1001 #fcfcf9, stop:1 #fcfcf9); border: 1px solid #8a867a; }"
               "QMenu::item { padding: 4px 24px 4px 30px; }"
               "QMenu::item:selected { background: #c1d2ee; border: 1px solid #316ac5; color: black; }"
               "QMenu::separator { height: 1px; background: #c5c2b8; margin: 3px 2px 3px 30px; }";
    default:
        return {};
    }
}

QString buttonStyleSheet(int styleNumber)
{
    switch (static_cast<ButtonStyle>(styleNumber)) {
    case ButtonStyle::Standard3D:
        return "QPushButton { background: #d4d0c8; border: 2px outset #ffffff; padding: 5px; }"
               "QPushButton:pressed { border: 2px inset #808080; }";
    case ButtonStyle::Flat:
        return "QPushButton { background: #f0f0f0; border: 1px solid #808080; padding: 5px; }"
               "QPushButton:hover { background: #ffffff; }"
               "QPushButton:pressed { background: #d8d8d8; }";
    case ButtonStyle::XP:
        return "QPushButton { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #ffffff, stop:0.85 #ecebe6,"
               " stop:1 #d6d0c5); border: 1px solid #003c74; border-radius: 3px; padding: 5px; }"
               "QPushButton:hover { border: 2px solid #f8b330; }"
               "QPushButton:pressed { background: #e3e2da; }";
    case ButtonStyle::Office:
        return "QPushButton { background: #f7f7f7; border: 1px solid #b0b0b0; padding: 5px; }"
               "QPushButton:hover { background: #ffe7a2; border: 1px solid #0a246a; }"
               "QPushButton:pressed { background: #ffc864; border: 1px solid #0a246a; }";
    case ButtonStyle::Office2003:
        return "QPushButton { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #f6f9ff, stop:1 #adc6ef);"
               " border: 1px solid #3b619c; padding: 5px; color: #0b2a68; }"
               "QPushButton:hover { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #fff6d1,"
               " stop:1 #ffd48b); border: 1px solid #000080; }"
               "QPushButton:pressed { background: #fe9a4e; }";
    case ButtonStyle::Vista:
        return "QPushButton { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #f2f2f2, stop:0.49 #ebebeb,"
               " stop:0.5 #dddddd, stop:1 #cfcfcf); border: 1px solid #707070; border-radius: 3px; padding: 5px; }"
               "QPushButton:hover { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #eaf6fd,"
               " stop:0.49 #d9f0fc, stop:0.5 #bee6fd, stop:1 #a7d9f5); border: 1px solid #3c7fb1; }"
               "QPushButton:pressed { background: #c4e5f6; border: 1px solid #2c628b; }";
    default:
        return {};
    }
}

} // namespace zw
