#include "ui/frame/ShortcutBar.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/frame/FaultTrap.h"

namespace zw {

ShortcutBar::ShortcutBar(QWidget* parent) : QToolBox(parent), m_toolbarMenu(new QMenu(this))
{
    setObjectName("ShortcutBar1");
    m_toolbarMenu->setObjectName("Coolbar1_menu");
}

QWidget* ShortcutBar::addPanel(ShortcutPanel panel, const QString& name, const QString& title)
{
    Panel& added = m_panels[panel];
    Q_ASSERT(added.widget == nullptr);
    added.widget = new QWidget;
    added.widget->setObjectName(name);
    added.layout = new QVBoxLayout(added.widget);
    added.layout->addStretch();
    const auto before = std::count_if(m_panels.begin(), m_panels.end(), [&](const auto& other) {
        return other.first < panel && indexOf(other.second.widget) >= 0;
    });
    insertItem(static_cast<int>(before), added.widget, title);
    setCurrentIndex(0);
    fitWidth();
    return added.widget;
}

int ShortcutBar::claimRow(ShortcutPlace place)
{
    // A key on a panel nobody added is a fault of the program, not of the user.
    std::vector<int>& rows = m_panels.at(place.panel).rows;
    const auto at = std::upper_bound(rows.begin(), rows.end(), place.row);
    const auto index = static_cast<int>(at - rows.begin());
    rows.insert(at, place.row);
    return index;
}

void ShortcutBar::addControl(ShortcutPlace place, QWidget* control)
{
    const int index = claimRow(place);
    m_panels[place.panel].layout->insertWidget(index, control);
    fitWidth();
}

void ShortcutBar::addControl(ShortcutPlace place, QLayout* row)
{
    const int index = claimRow(place);
    m_panels[place.panel].layout->insertLayout(index, row);
    fitWidth();
}

QPushButton* ShortcutBar::addKey(ShortcutPlace place, const QString& name, const QString& caption,
                                 std::function<void()> handler, std::optional<ToolbarTwin> twin)
{
    auto* key = new QPushButton(caption);
    key->setObjectName(name);
    connect(key, &QPushButton::clicked, this, faulttrap::trapped(std::move(handler)));
    addControl(place, key);
    if (twin) {
        auto* entry = new QAction(twin->caption, m_toolbarMenu);
        entry->setObjectName(twin->name);
        connect(entry, &QAction::triggered, key, &QPushButton::click);
        addToolbarEntry(twin->place, entry);
    }
    return key;
}

void ShortcutBar::addToolbarEntry(int place, QAction* entry)
{
    const auto at = std::upper_bound(m_toolbarPlaces.begin(), m_toolbarPlaces.end(), place);
    const auto index = at - m_toolbarPlaces.begin();
    const QList<QAction*> entries = m_toolbarMenu->actions();
    m_toolbarMenu->insertAction(index < entries.size() ? entries[index] : nullptr, entry);
    m_toolbarPlaces.insert(at, place);
}

void ShortcutBar::addToolbarSeparator(int place)
{
    auto* separator = new QAction(m_toolbarMenu);
    separator->setSeparator(true);
    addToolbarEntry(place, separator);
}

void ShortcutBar::takeButtonStyle(QPushButton* key)
{
    m_styledKeys.push_back(key);
    key->setStyleSheet(m_buttonStyle);
}

void ShortcutBar::setButtonStyle(const QString& sheet)
{
    m_buttonStyle = sheet;
    for (QPushButton* key : m_styledKeys)
        key->setStyleSheet(sheet);
}

void ShortcutBar::fitWidth()
{
    // As wide as the widest panel needs, with room for a vertical scroll bar on a low screen, so no caption or
    // button is ever cut and no horizontal scroll bar appears.
    int widest = 0;
    for (int i = 0; i < count(); ++i)
        widest = std::max(widest, widget(i)->minimumSizeHint().width());
    setFixedWidth(widest + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * frameWidth() + 4);
}

} // namespace zw
