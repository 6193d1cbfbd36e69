#include "ui/lists/helpp3.h"

#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>

#include "ui/frame/ProportionalLayout.h"
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

    // Both controls keep their places and sizes relative to the window as it is resized.
    auto* layout = new ProportionalLayout(this, {720, 560});
    layout->place(m_browser, {10, 10, 700, 496});
    layout->place(close, {600, 516, 110, 32});
    resize(720, 560);
}

} // namespace zw
