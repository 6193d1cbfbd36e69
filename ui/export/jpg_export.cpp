#include "ui/export/jpg_export.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace zw {
namespace {

constexpr QSize kPreviewSize(380, 286); // two thirds of the receipt area

} // namespace

jpg_export::jpg_export(const std::filesystem::path& picture, QWidget* parent, EncoderTable encoders)
    : PictureExportWindow(parent, std::move(encoders))
{
    setObjectName("jpg_export");
    setWindowTitle("Quittung als JPG-Datei exportieren...");
    auto* heading = new QLabel(QString::fromUtf8("Bitte wählen Sie die Qualität und Größe der JPG Datei!"), this);
    heading->setObjectName("Label21");
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    auto* prompt = new QLabel(QString::fromUtf8("Geben Sie hier die Qualität in Prozent ein:"), this);
    prompt->setObjectName("Label1");
    m_quality = new QScrollBar(Qt::Horizontal, this);
    m_quality->setObjectName("HScroll1");
    m_qualityLabel = new QLabel(this);
    m_qualityLabel->setObjectName("Label3");
    auto* frame = new QGroupBox("Vorschau", this);
    frame->setObjectName("Frame1");
    auto* preview = new QLabel(frame);
    preview->setObjectName("Picture2");
    preview->setFixedSize(kPreviewSize);
    preview->setAlignment(Qt::AlignCenter);
    auto* frameLayout = new QVBoxLayout(frame);
    frameLayout->addWidget(preview);
    auto* saveButton = new QPushButton("Beleg als JPG &speichern", this);
    saveButton->setObjectName("xpButton3");
    auto* backButton = new QPushButton(QString::fromUtf8("&Zurück"), this);
    backButton->setObjectName("xpButton1");

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(saveButton);
    buttons->addWidget(backButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(prompt);
    layout->addWidget(m_quality);
    layout->addWidget(m_qualityLabel);
    layout->addWidget(frame);
    layout->addLayout(buttons);

    connect(saveButton, &QPushButton::clicked, this, [this] { xpButton3(); });
    connect(backButton, &QPushButton::clicked, this, &QDialog::reject);
    // Both the change and the drag move the label.
    connect(m_quality, &QScrollBar::valueChanged, this, [this](int value) { showQuality(value); });
    connect(m_quality, &QScrollBar::sliderMoved, this, [this](int value) { showQuality(value); });

    startSession();
    m_quality->setRange(0, 100);
    m_quality->setValue(85);
    showQuality(m_quality->value());
    showPreview(preview, picture);
}

void jpg_export::showQuality(int value)
{
    // It says compression though a higher value means better quality; the label always read so.
    m_qualityLabel->setText("JPG Kompression: " + QString::number(value));
}

void jpg_export::xpButton3() { save(PictureFormat::Jpeg, "jpg", m_quality->value()); }

} // namespace zw
