#include <QMenu>
#include <QMenuBar>

#include "ui/frame/Looks.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/ShortcutBar.h"

namespace zw {

// The menu design reaches every menu of the window, the popups of the form and the tray included; the shortcut
// bar's own popup keeps the plain drawing.
void Quittung::applyMenuDesign(int styleNumber)
{
    const QString sheet = menuDesignStyleSheet(styleNumber);
    menuBar()->setStyleSheet(sheet);
    for (QMenu* menu : findChildren<QMenu*>()) {
        if (menu->objectName() != "mnuPopupTop")
            menu->setStyleSheet(sheet);
    }
}

void Quittung::applyButtonStyle(int styleNumber)
{
    m_shortcutBar->setButtonStyle(buttonStyleSheet(styleNumber));
}

} // namespace zw
