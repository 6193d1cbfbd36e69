#include "ui/ledger/Headline.h"

#include <QLabel>

namespace zw::ledgerwindows {

QLabel* headline(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setBold(true);
    font.setPointSize(font.pointSize() + 4);
    label->setFont(font);
    return label;
}

} // namespace zw::ledgerwindows
