#include "ui/frame/Ruler.h"

#include <QPainter>

namespace zw {

namespace {
constexpr double kPixelsPerMillimetre = 96.0 / 25.4;
constexpr int kThickness = 16;
} // namespace

Ruler::Ruler(Qt::Orientation orientation, int lengthPixels, QWidget* parent)
    : QWidget(parent), m_orientation(orientation)
{
    if (orientation == Qt::Horizontal)
        setFixedSize(lengthPixels, kThickness);
    else
        setFixedSize(kThickness, lengthPixels);
}

void Ruler::setMark(int pixel)
{
    m_mark = pixel;
    update();
}

void Ruler::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(250, 250, 240));
    painter.setPen(QColor(90, 90, 90));
    QFont small = font();
    small.setPointSize(6);
    painter.setFont(small);
    const int length = m_orientation == Qt::Horizontal ? width() : height();
    for (int mm = 0; mm * kPixelsPerMillimetre < length; ++mm) {
        int at = static_cast<int>(mm * kPixelsPerMillimetre);
        int tick = mm % 10 == 0 ? 8 : mm % 5 == 0 ? 5 : 3;
        if (m_orientation == Qt::Horizontal) {
            painter.drawLine(at, kThickness - tick, at, kThickness - 1);
            if (mm % 10 == 0 && mm > 0)
                painter.drawText(at + 2, 8, QString::number(mm / 10));
        } else {
            painter.drawLine(kThickness - tick, at, kThickness - 1, at);
            if (mm % 10 == 0 && mm > 0)
                painter.drawText(1, at + 9, QString::number(mm / 10));
        }
    }
    if (m_mark >= 0) {
        painter.setPen(QPen(QColor(200, 0, 0), 1));
        if (m_orientation == Qt::Horizontal)
            painter.drawLine(m_mark, 0, m_mark, kThickness);
        else
            painter.drawLine(0, m_mark, kThickness, m_mark);
    }
    painter.setPen(QColor(160, 160, 160));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace zw
