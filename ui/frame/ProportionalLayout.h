#pragma once

#include <QLayout>
#include <QSize>
#include <vector>

#include "lists/WindowResize.h"

namespace zw {

// A window whose controls keep their places and sizes relative to the window as it is resized (report1, helpp3):
// each control has its box in the designed client size and is scaled from there.
class ProportionalLayout : public QLayout
{
public:
    enum class Text { MayBeCut, KeptWhole };

    ProportionalLayout(QWidget* window, QSize designed);
    ~ProportionalLayout() override;

    // A control at its designed box; a text kept whole sets the window's smallest size so that it is never cut.
    void place(QWidget* control, QRect designed, Text text = Text::MayBeCut);

    void addItem(QLayoutItem* item) override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    int count() const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    struct Placed
    {
        QLayoutItem* item;
        ControlBox designed;
        Text text;
    };
    ClientSize m_designed;
    std::vector<Placed> m_placed;
};

} // namespace zw
