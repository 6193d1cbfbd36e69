#include "ui/print/PrintControls.h"

#include <QPlainTextEdit>
#include <QPushButton>

#include "ui/frame/QtText.h"

namespace zw::printwindows {

QString toBox(const std::string& text)
{
    QString shown = qt(text);
    shown.replace("\r\n", "\n");
    return shown;
}

std::string fromBox(const QPlainTextEdit* box)
{
    QString text = box->toPlainText();
    text.replace("\n", "\r\n");
    return text.toStdString();
}

QPushButton* button(const char* name, const char* caption, QWidget* parent)
{
    auto* result = new QPushButton(caption, parent);
    result->setObjectName(name);
    return result;
}

} // namespace zw::printwindows
