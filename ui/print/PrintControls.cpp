#include "ui/print/PrintControls.h"

#include <QBoxLayout>
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

void addSaveAndLeave(QBoxLayout* layout, QPushButton* save, QPushButton* leave)
{
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(leave);
    layout->addLayout(buttons);
}

} // namespace zw::printwindows
