#include "ui/lists/helpp3.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include "ui/frame/QtText.h"

namespace zw {

helpp3::helpp3(const std::filesystem::path& page, QWidget* parent) : QDialog(parent)
{
    setObjectName("helpp3");
    setWindowTitle("Zettelwerk Hilfe");
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setSizeGripEnabled(true);

    m_browser = new QTextBrowser(this);
    m_browser->setObjectName("brWebBrowser");
    m_browser->setOpenExternalLinks(true);
    const QString file = qt(page.string());
    if (std::filesystem::is_regular_file(page))
        m_browser->setSource(QUrl::fromLocalFile(file));
    else
        m_browser->setHtml("<p>Die Hilfedatei <b>" + file.toHtmlEscaped() + "</b> wurde nicht gefunden.</p>");

    auto* close = new QPushButton("&Schließen", this);
    close->setObjectName("Command1");
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_browser, 1);
    layout->addLayout(buttons);
    resize(720, 560);
}

} // namespace zw
