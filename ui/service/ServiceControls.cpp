#include "ui/service/ServiceControls.h"

#include <QProgressBar>
#include <QPushButton>

#include "ui/frame/QtText.h"

namespace zw::servicewindows {

QPushButton* button(const char* name, const QString& caption, QWidget* owner)
{
    auto* key = new QPushButton(caption, owner);
    key->setObjectName(name);
    return key;
}

QProgressBar* progressBar(const char* name, QWidget* owner)
{
    auto* bar = new QProgressBar(owner);
    bar->setObjectName(name);
    bar->setRange(0, 100);
    bar->setValue(0);
    return bar;
}

QString lines(const std::string& text)
{
    QString shown = qt(text);
    shown.replace("\r\n", "\n");
    return shown;
}

} // namespace zw::servicewindows
