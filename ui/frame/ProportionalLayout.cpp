#include "ui/frame/ProportionalLayout.h"

#include <QWidget>
#include <QWidgetItem>
#include <algorithm>

namespace zw {

ProportionalLayout::ProportionalLayout(QWidget* window, QSize designed)
    : QLayout(window), m_designed{designed.width(), designed.height()}
{
    setContentsMargins(0, 0, 0, 0);
}

ProportionalLayout::~ProportionalLayout()
{
    for (const Placed& placed : m_placed)
        delete placed.item;
}

void ProportionalLayout::place(QWidget* control, QRect designed, Text text)
{
    addChildWidget(control);
    m_placed.push_back(
        {new QWidgetItem(control), {designed.x(), designed.y(), designed.width(), designed.height()}, text});
    invalidate();
}

void ProportionalLayout::addItem(QLayoutItem* item)
{
    // Items without a designed box sit at the top left at their own size.
    m_placed.push_back({item, {0, 0, item->sizeHint().width(), item->sizeHint().height()}, Text::MayBeCut});
}

QLayoutItem* ProportionalLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_placed[static_cast<std::size_t>(index)].item : nullptr;
}

QLayoutItem* ProportionalLayout::takeAt(int index)
{
    if (index < 0 || index >= count())
        return nullptr;
    QLayoutItem* item = m_placed[static_cast<std::size_t>(index)].item;
    m_placed.erase(m_placed.begin() + index);
    return item;
}

int ProportionalLayout::count() const { return static_cast<int>(m_placed.size()); }

QSize ProportionalLayout::sizeHint() const { return {m_designed.width, m_designed.height}; }

QSize ProportionalLayout::minimumSize() const
{
    QSize smallest(1, 1);
    for (const Placed& placed : m_placed) {
        if (placed.text != Text::KeptWhole)
            continue;
        const QSize needed = placed.item->sizeHint();
        const ClientSize keeping =
            smallestClientKeeping(placed.designed, m_designed, {needed.width(), needed.height()});
        smallest = smallest.expandedTo({keeping.width, keeping.height});
    }
    return smallest;
}

void ProportionalLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    for (const Placed& placed : m_placed) {
        const ControlBox box = scaledBox(placed.designed, m_designed, {rect.width(), rect.height()});
        placed.item->setGeometry(QRect(rect.x() + box.left, rect.y() + box.top, box.width, box.height));
    }
}

} // namespace zw
