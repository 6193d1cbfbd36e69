#pragma once

#include <QAbstractSpinBox>
#include <functional>

namespace zw {

// A spin field over text, as the form model holds it: it shows any text it is given (empty stays empty, a stored
// 300 stays 300), takes digits and a minus sign, and its arrows step the number within its own limits.
class TextSpinBox : public QAbstractSpinBox
{
public:
    TextSpinBox(int lowest, int highest, QWidget* parent = nullptr);

    QString text() const;
    // Shows the model's text without reporting it back as an edit.
    void showText(const QString& text);
    // The user typed or stepped: the new text.
    std::function<void(const QString&)> edited;

    void stepBy(int steps) override;
    QValidator::State validate(QString& input, int& position) const override;

protected:
    StepEnabled stepEnabled() const override;

private:
    int m_lowest;
    int m_highest;
};

} // namespace zw
