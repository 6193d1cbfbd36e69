#include "ui/frame/TextSpinBox.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <algorithm>

namespace zw {

TextSpinBox::TextSpinBox(int lowest, int highest, QWidget* parent)
    : QAbstractSpinBox(parent), m_lowest(lowest), m_highest(highest)
{
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
        if (edited)
            edited(text);
    });
}

QString TextSpinBox::text() const { return lineEdit()->text(); }

void TextSpinBox::showText(const QString& text)
{
    if (lineEdit()->text() != text)
        lineEdit()->setText(text);
}

void TextSpinBox::stepBy(int steps)
{
    bool isNumber = false;
    const int value = lineEdit()->text().trimmed().toInt(&isNumber);
    // Text that is no number steps from the lowest value; a number outside the limits steps back into them.
    const int next = isNumber ? std::clamp(value + steps, m_lowest, m_highest) : m_lowest;
    lineEdit()->setText(QString::number(next));
    if (edited)
        edited(lineEdit()->text());
}

QValidator::State TextSpinBox::validate(QString& input, int& /*position*/) const
{
    static const QRegularExpression kDigits("^-?[0-9]*$");
    return kDigits.match(input).hasMatch() ? QValidator::Acceptable : QValidator::Invalid;
}

QAbstractSpinBox::StepEnabled TextSpinBox::stepEnabled() const { return StepUpEnabled | StepDownEnabled; }

} // namespace zw
