#include "ui/export/export_pdf.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include "export/PdfExport.h"
#include "ui/frame/FileDialogs.h"

namespace zw {

const char* const export_pdf::kReaderDownloadPage = "https://get.adobe.com/de/reader/";

export_pdf::export_pdf(std::filesystem::path pictureFile, QWidget* parent)
    : QDialog(parent), m_pictureFile(std::move(pictureFile))
{
    setObjectName("export_pdf");
    setWindowTitle("PDF Export");
    openUrl = [](const QUrl& url) { QDesktopServices::openUrl(url); };
    m_speicherDialog.setPresenter(fileDialogPresenter(this));

    auto* heading = new QLabel("Quittung als PDF Datei exportieren...", this);
    heading->setObjectName("xpLabel2");
    QFont bold = heading->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    heading->setFont(bold);
    auto* explanation = new QLabel(
        "Hier haben Sie die Möglichkeit die von Ihnen erstellte Quittung als PDF-Datei zu exportieren. Dies ist "
        "gerade dann ideal, wenn Sie die Quittung z. B. per eMail versenden möchten. Sollten Sie den Acrobat "
        "Reader zum öffnen der Datei nicht haben, dann klicken Sie auf den Button \"Get Adobe Reader\".",
        this);
    explanation->setObjectName("xpLabel1");
    explanation->setWordWrap(true);

    auto* reader = new QToolButton(this);
    reader->setObjectName("Image4");
    reader->setText("Get Adobe Reader");
    reader->setIcon(style()->standardIcon(QStyle::SP_ArrowDown));
    reader->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    reader->setToolTip("Acrobat Reader runterladen");
    reader->setAutoRaise(true);
    connect(reader, &QToolButton::clicked, this, [this] { openUrl(QUrl(kReaderDownloadPage)); });

    m_lstLog = new QListWidget(this);
    m_lstLog->setObjectName("lstLog");
    m_lstLog->setMinimumHeight(110);

    auto* go = new QPushButton("PDF &erstellen...", this);
    go->setObjectName("cmdGo");
    go->setDefault(true);
    m_command1 = new QPushButton("Erstellte PDF ö&ffnen", this);
    m_command1->setObjectName("Command1");
    m_command1->setEnabled(false);
    auto* back = new QPushButton("&Zurück", this);
    back->setObjectName("xpButton1");
    connect(go, &QPushButton::clicked, this, [this] { cmdGo(); });
    connect(m_command1, &QPushButton::clicked, this, [this] {
        openUrl(QUrl::fromLocalFile(QString::fromStdString(m_speicherDialog.FileName)));
    });
    connect(back, &QPushButton::clicked, this, &QDialog::reject);

    auto* top = new QHBoxLayout;
    top->addWidget(explanation, 1);
    top->addWidget(reader, 0, Qt::AlignTop);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(go);
    buttons->addWidget(m_command1);
    buttons->addStretch(1);
    buttons->addWidget(back);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addLayout(top);
    layout->addWidget(m_lstLog, 1);
    layout->addLayout(buttons);
    resize(520, 330);
}

export_pdf::~export_pdf() = default;

void export_pdf::cmdGo()
{
    // A fresh document each time; the old one goes with its events.
    m_export = std::make_unique<PdfExport>(m_pictureFile);
    m_export->logChanged = [this] {
        m_lstLog->clear();
        for (const auto& line : m_export->log())
            m_lstLog->addItem(QString::fromStdString(line));
        m_lstLog->repaint();
        m_command1->setEnabled(m_command1->isEnabled() || m_export->openEnabled());
    };
    m_export->cmdGo(m_speicherDialog);
}

} // namespace zw
