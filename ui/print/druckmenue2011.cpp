#include "ui/print/druckmenue2011.h"
#include "ui/frame/QtText.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QUrl>
#include <QVBoxLayout>

#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "core/Settings.h"

namespace zw {
namespace {


QLineEdit* numberField(const char* name, QWidget* parent)
{
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setMaximumWidth(60);
    return field;
}

} // namespace

druckmenue2011::druckmenue2011(const ReceiptForm& form, Settings& settings, const ProgramPaths& paths,
                               const QString& printer, PrintJob job, QWidget* parent)
    : QDialog(parent), m_form(form), m_settings(settings), m_paths(paths), m_job(std::move(job))
{
    setObjectName("druckmenue2011");
    setWindowTitle("Druckmenü");
    setModal(true);

    const QString bitmap = QString::fromStdString((m_paths.tempFolder() / "temp_.bmp").string());
    m_picture = QImage(bitmap);
    m_preview = new QLabel(this);
    m_preview->setObjectName("Picture1");
    m_preview->setFixedSize(380, 286);
    m_preview->setFrameShape(QFrame::Box);
    if (!m_picture.isNull())
        m_preview->setPixmap(QPixmap::fromImage(m_picture.scaled(m_preview->size(), Qt::KeepAspectRatio,
                                                                 Qt::SmoothTransformation)));

    auto* printerCaption = new QLabel("Bitte wählen Sie Ihren Drucker aus:", this);
    m_printers = new QComboBox(this);
    m_printers->setObjectName("Combo_Drucker");
    m_printers->setEditable(false);

    auto* paperGroup = new QButtonGroup(this);
    const char* paperCaptions[] = {"Beleg(e) auf DIN A4 drucken", "Beleg(e) auf DIN A5 drucken",
                                   "Freie Dimensionierung"};
    for (int i = 0; i < 3; ++i) {
        m_din[i] = new QRadioButton(paperCaptions[i], this);
        m_din[i]->setObjectName(QString("DIN_%1").arg(i));
        paperGroup->addButton(m_din[i], i);
    }
    connect(paperGroup, &QButtonGroup::idClicked, this, [this](int id) { applyPaper(static_cast<Paper>(id)); });

    auto* colourGroup = new QButtonGroup(this);
    m_colour[0] = new QRadioButton("S/W Modus", this);
    m_colour[0]->setObjectName("Farbmodus_0");
    m_colour[1] = new QRadioButton("Farbmodus (RGB)", this);
    m_colour[1]->setObjectName("Farbmodus_1");
    colourGroup->setExclusive(false); // the stored pair may hold both off
    for (int i = 0; i < 2; ++i) {
        colourGroup->addButton(m_colour[i], i);
        connect(m_colour[i], &QRadioButton::clicked, this, [this, i] {
            m_colour[i]->setChecked(true);
            m_colour[1 - i]->setChecked(false);
            storeColour(m_settings, fields());
        });
    }

    m_quality = new QComboBox(this);
    m_quality->setObjectName("Combo_Qualitaet");
    for (auto caption : kQualityCaptions)
        m_quality->addItem(qt(caption));

    m_x = numberField("txtxPos", this);
    m_y = numberField("txtyPos", this);
    m_width = numberField("txtxSize", this);
    m_height = numberField("txtySize", this);
    m_secondTop = numberField("txtVonOben", this);

    m_closeAfterPrint = new QCheckBox("Wenn Druck gestartet, dieses Fenster schließen.", this);
    m_closeAfterPrint->setObjectName("Fenster_Close");
    connect(m_closeAfterPrint, &QCheckBox::clicked, this, [this](bool on) {
        storeCloseAfterPrint(m_settings, on);
    });

    auto* preview = new QPushButton("Beleg &anzeigen", this);
    preview->setObjectName("Command1");
    connect(preview, &QPushButton::clicked, this,
            [bitmap] { QDesktopServices::openUrl(QUrl::fromLocalFile(bitmap)); });
    m_printButton = new QPushButton("&Drucken", this);
    m_printButton->setObjectName("cmdPrint");
    m_printButton->setDefault(true);
    connect(m_printButton, &QPushButton::clicked, this, [this] { print(); });
    auto* close = new QPushButton("&Abbrechen", this);
    close->setObjectName("Command2");
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* position = new QGroupBox("Druckposition (mm)", this);
    auto* positionGrid = new QGridLayout(position);
    positionGrid->addWidget(m_x, 0, 0);
    positionGrid->addWidget(new QLabel("mm von links", position), 0, 1);
    positionGrid->addWidget(m_y, 1, 0);
    positionGrid->addWidget(new QLabel("mm von oben", position), 1, 1);
    positionGrid->addWidget(new QLabel("Pos. X", position), 2, 0);
    positionGrid->addWidget(m_width, 2, 1);
    positionGrid->addWidget(new QLabel("mm", position), 2, 2);
    positionGrid->addWidget(new QLabel("Pos. Y", position), 3, 0);
    positionGrid->addWidget(m_height, 3, 1);
    positionGrid->addWidget(new QLabel("mm", position), 3, 2);
    positionGrid->addWidget(new QLabel("von oben zum 2. Beleg", position), 4, 0);
    positionGrid->addWidget(m_secondTop, 4, 1);
    positionGrid->addWidget(new QLabel("mm", position), 4, 2);

    auto* more = new QGroupBox("Weitere Druckeinstellungen", this);
    auto* moreLayout = new QVBoxLayout(more);
    for (auto* din : m_din)
        moreLayout->addWidget(din);
    moreLayout->addWidget(m_colour[0]);
    moreLayout->addWidget(m_colour[1]);
    auto* qualityRow = new QHBoxLayout;
    qualityRow->addWidget(new QLabel("Qualität", more));
    qualityRow->addWidget(m_quality, 1);
    moreLayout->addLayout(qualityRow);

    auto* right = new QVBoxLayout;
    right->addWidget(printerCaption);
    right->addWidget(m_printers);
    right->addWidget(position);
    right->addWidget(more);
    right->addWidget(m_closeAfterPrint);
    right->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(preview);
    buttons->addStretch();
    buttons->addWidget(m_printButton);
    buttons->addWidget(close);
    auto* left = new QVBoxLayout;
    left->addWidget(m_preview);
    left->addStretch();
    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addLayout(right);
    auto* outer = new QVBoxLayout(this);
    outer->addLayout(columns);
    outer->addLayout(buttons);

    for (const QString& name : PrintJob::printerNames())
        m_printers->addItem(name);
    showFields(openPrintDialog(m_form, m_settings, printer));
}

QString druckmenue2011::chosenPrinter() const { return m_printers->currentText(); }

Paper druckmenue2011::paper() const
{
    for (int i = 0; i < 3; ++i) {
        if (m_din[i]->isChecked())
            return static_cast<Paper>(i);
    }
    return Paper::A4;
}

PrintDialogFields druckmenue2011::fields() const
{
    PrintDialogFields fields;
    fields.printer = m_printers->currentText();
    fields.paper = paper();
    fields.monochrome = m_colour[0]->isChecked();
    fields.colour = m_colour[1]->isChecked();
    fields.qualityIndex = m_quality->currentIndex();
    fields.x = m_x->text().toStdString();
    fields.y = m_y->text().toStdString();
    fields.width = m_width->text().toStdString();
    fields.height = m_height->text().toStdString();
    fields.secondTop = m_secondTop->text().toStdString();
    fields.sizeLocked = m_width->isReadOnly();
    fields.closeAfterPrint = m_closeAfterPrint->isChecked();
    return fields;
}

void druckmenue2011::showFields(const PrintDialogFields& fields)
{
    m_printers->setCurrentIndex(m_printers->findText(fields.printer));
    m_din[static_cast<int>(fields.paper)]->setChecked(true);
    m_colour[0]->setChecked(fields.monochrome);
    m_colour[1]->setChecked(fields.colour);
    m_quality->setCurrentIndex(fields.qualityIndex);
    m_x->setText(qt(fields.x));
    m_y->setText(qt(fields.y));
    m_width->setText(qt(fields.width));
    m_height->setText(qt(fields.height));
    m_width->setReadOnly(fields.sizeLocked);
    m_height->setReadOnly(fields.sizeLocked);
    m_secondTop->setText(qt(fields.secondTop));
    m_closeAfterPrint->setChecked(fields.closeAfterPrint);
}

void druckmenue2011::applyPaper(Paper paper)
{
    PrintDialogFields shown = fields();
    choosePaper(shown, paper);
    showFields(shown);
    if (!shown.sizeLocked)
        m_width->setFocus();
}

void druckmenue2011::print()
{
    m_printButton->setEnabled(false);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    PrintDialogFields shown = fields();
    const PrintRequest request = pressPrint(shown, m_form);
    m_secondTop->setText(qt(shown.secondTop));
    bool printed = false;
    try {
        m_job.print(m_picture, request);
        printed = true;
    } catch (const RunError& error) {
        QApplication::restoreOverrideCursor();
        m_printButton->setEnabled(true);
        if (reportFault)
            reportFault(error);
        return;
    }
    QApplication::restoreOverrideCursor();
    m_printButton->setEnabled(true);
    if (printed && m_closeAfterPrint->isChecked())
        accept();
}

} // namespace zw
