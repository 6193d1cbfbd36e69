#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QWidget>
#include <algorithm>

namespace zw {

// Room the desktop's title bar takes beside the title: the window icon and three buttons, with some air.
inline constexpr int kTitleBarControlsPixels = 130;

// A small window is at least as wide as its title needs, so the desktop does not shorten it ("Ei...en").
// Title bars often set their text in bold, so the title is measured bold.
inline void keepTitleWhole(QWidget& window)
{
    QFont bold = window.font();
    bold.setBold(true);
    const int needed = QFontMetrics(bold).horizontalAdvance(window.windowTitle()) + kTitleBarControlsPixels;
    window.setMinimumWidth(std::max(window.minimumWidth(), needed));
}

} // namespace zw
