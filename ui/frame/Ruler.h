#pragma once

#include <QWidget>

namespace zw {

// A millimetre ruler beside the form; a mark follows the mouse over the form.
class Ruler : public QWidget
{
public:
    Ruler(Qt::Orientation orientation, int lengthPixels, QWidget* parent = nullptr);
    void setMark(int pixel);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::Orientation m_orientation;
    int m_mark = -1;
};

} // namespace zw
