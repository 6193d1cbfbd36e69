#include "ui/export/png_export.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zw {

png_export::png_export(const std::filesystem::path& picture, QWidget* parent, EncoderTable encoders)
    : PictureExportWindow(parent, std::move(encoders))
{
    setObjectName("png_export");
    setWindowTitle("Export als PNG-Datei");
    auto* explanation = new QLabel(
        QString::fromUtf8("Der unten angezeigte Beleg kann nun als PNG-Datei exportiert werden. Klicken Sie dazu "
                          "bitte auf den Button \"Exportieren\". Es erscheint anschließend der "
                          "Datei-Speichern-Dialog. Geben Sie hier den Speicherort sowie den Dateinamen ein."),
        this);
    explanation->setObjectName("Label1");
    explanation->setWordWrap(true);
    auto* preview = new QLabel(this);
    preview->setObjectName("Picture1");
    preview->setFixedSize(456, 343); // four fifths of the receipt area
    preview->setAlignment(Qt::AlignCenter);
    preview->setFrameShape(QFrame::Box);
    auto* exportButton = new QPushButton("&Exportieren", this);
    exportButton->setObjectName("Command1");
    auto* backButton = new QPushButton(QString::fromUtf8("&Zurück"), this);
    backButton->setObjectName("Command2");

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(exportButton);
    buttons->addWidget(backButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addWidget(preview, 0, Qt::AlignHCenter);
    layout->addLayout(buttons);
    explanation->setMaximumWidth(preview->width() + 40);

    connect(exportButton, &QPushButton::clicked, this, [this] { Command1(); });
    connect(backButton, &QPushButton::clicked, this, &QDialog::reject);

    startSession();
    showPreview(preview, picture);
}

void png_export::Command1()
{
    const auto status = save(PictureFormat::Png, "png", 0);
    if (status && *status != PictureStatus::Ok)
        showMessage("Speichern ist fehlgeschlagen.", "Error");
}

void png_export::done(int result)
{
    endSession();
    QDialog::done(result);
}

} // namespace zw
