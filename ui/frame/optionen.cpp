#include "ui/frame/optionen.h"
#include "ui/frame/QtText.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "app/OptionenLogic.h"
#include "core/RunError.h"

namespace zw {
namespace {


QLineEdit* lineEdit(const char* name, QWidget* parent, int width)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setMaximumWidth(width);
    return edit;
}

QHBoxLayout* withUnit(QWidget* field, const QString& unit)
{
    auto* row = new QHBoxLayout;
    row->addWidget(field);
    row->addWidget(new QLabel(unit));
    row->addStretch();
    return row;
}

} // namespace

optionen::optionen(QWidget* parent, OptionenLogic& logic) : QDialog(parent), m_logic(logic)
{
    setObjectName("optionen");
    setWindowTitle("Optionen");
    setModal(true);

    auto* headline = new QLabel("Bitte nehmen Sie hier Ihre Programmeinstellungen vor...", this);
    headline->setObjectName("Label2");
    QFont bold = headline->font();
    bold.setBold(true);
    headline->setFont(bold);

    auto* tabs = new QTabWidget(this);
    tabs->setObjectName("sevTabStrip1");

    // Beleg: rate, number, type.
    auto* receiptPage = new QWidget;
    auto* receiptLayout = new QVBoxLayout(receiptPage);
    auto* rateFrame = new QGroupBox(" Mehrwertsteuer ", receiptPage);
    auto* rateLayout = new QVBoxLayout(rateFrame);
    m_option1 = new QRadioButton("Der Standardwert bleibt bei 19%", rateFrame);
    m_option1->setObjectName("Option1");
    m_option2 = new QRadioButton("Einen benutzerdefinierten Wert setzen", rateFrame);
    m_option2->setObjectName("Option2");
    m_rate = lineEdit("mwstwert1", rateFrame, 60);
    rateLayout->addWidget(m_option1);
    rateLayout->addWidget(m_option2);
    rateLayout->addLayout(withUnit(m_rate, "%"));
    receiptLayout->addWidget(rateFrame);
    auto* numberFrame = new QGroupBox(" Quittungszähler ", receiptPage);
    auto* numberLayout = new QVBoxLayout(numberFrame);
    numberLayout->addWidget(new QLabel("Legen Sie hier die Startzahl des Quittungszähler fest:", numberFrame));
    m_number = lineEdit("Text1", numberFrame, 140);
    numberLayout->addWidget(m_number);
    receiptLayout->addWidget(numberFrame);
    auto* typeFrame = new QGroupBox(" Belegart ", receiptPage);
    auto* typeLayout = new QHBoxLayout(typeFrame);
    m_type = lineEdit("belegart_opt", typeFrame, 220);
    auto* take = new QToolButton(typeFrame);
    take->setObjectName("Button2");
    take->setIcon(style()->standardIcon(QStyle::SP_DialogApplyButton));
    take->setToolTip("Belegart übernehmen");
    auto* dropType = new QToolButton(typeFrame);
    dropType->setObjectName("Button3");
    dropType->setIcon(style()->standardIcon(QStyle::SP_DialogResetButton));
    dropType->setToolTip("Gespeicherte Belegart löschen");
    typeLayout->addWidget(m_type);
    typeLayout->addWidget(take);
    typeLayout->addWidget(dropType);
    typeLayout->addStretch();
    receiptLayout->addWidget(typeFrame);
    receiptLayout->addStretch();
    tabs->addTab(receiptPage, "Beleg");

    // Druck: the three offsets.
    auto* printPage = new QWidget;
    auto* printLayout = new QFormLayout(printPage);
    m_abstand = lineEdit("abstand", printPage, 60);
    m_abstand->setValidator(new QIntValidator(-25, 200, m_abstand));
    m_anzahl = lineEdit("anzahl", printPage, 60);
    m_anzahl->setValidator(new QIntValidator(1, 100, m_anzahl));
    m_oben = lineEdit("oben", printPage, 60);
    m_oben->setValidator(new QIntValidator(1, 270, m_oben));
    printLayout->addRow("Abstand vom linken Papierrand:", withUnit(m_abstand, "mm"));
    printLayout->addRow("Geben Sie hier die Anzahl der zu druckenden Seiten ein:", withUnit(m_anzahl, "Seiten"));
    printLayout->addRow("Abstand vom oberen Papierrand:", withUnit(m_oben, "mm"));
    tabs->addTab(printPage, "Druck");

    // Programm: switches, button style, place of issue, ruler.
    auto* programPage = new QWidget;
    auto* programLayout = new QVBoxLayout(programPage);
    m_calculation = new QCheckBox("Automatische Berechnung des Gesamtbetrags aktiviern", programPage);
    m_calculation->setObjectName("checkGB_Berechnung");
    m_date = new QCheckBox("Aktuelles Datum beim Programmstart auf den Beleg einfügen", programPage);
    m_date->setObjectName("xpCheck1");
    m_tips = new QCheckBox("\"Tipp des Tages\" beim nächsten Programmstart aktivieren", programPage);
    m_tips->setObjectName("chkLoadTipsAtStartup");
    auto* rulerRow = new QHBoxLayout;
    m_ruler = new QCheckBox("Lineal aktiviert", programPage);
    m_ruler->setObjectName("ruler_check1");
    auto* dropRuler = new QToolButton(programPage);
    dropRuler->setObjectName("Command1");
    dropRuler->setIcon(style()->standardIcon(QStyle::SP_DialogResetButton));
    dropRuler->setToolTip("Gespeicherte Linealeinstellung löschen");
    rulerRow->addWidget(m_ruler);
    rulerRow->addWidget(dropRuler);
    rulerRow->addStretch();
    auto* styleRow = new QHBoxLayout;
    styleRow->addWidget(new QLabel("Button-Style:", programPage));
    m_buttonStyle = new QLabel(programPage);
    m_buttonStyle->setObjectName("Label12");
    auto* dropStyle = new QToolButton(programPage);
    dropStyle->setObjectName("Button4");
    dropStyle->setIcon(style()->standardIcon(QStyle::SP_DialogResetButton));
    dropStyle->setToolTip("Gespeicherten Button-Style löschen");
    styleRow->addWidget(m_buttonStyle);
    styleRow->addWidget(dropStyle);
    styleRow->addStretch();
    auto* dropPlace = new QPushButton("&Festgelegten Ausstellerort löschen", programPage);
    dropPlace->setObjectName("Button1");
    for (QWidget* widget : std::initializer_list<QWidget*>{m_calculation, m_date, m_tips})
        programLayout->addWidget(widget);
    programLayout->addLayout(rulerRow);
    programLayout->addLayout(styleRow);
    programLayout->addWidget(dropPlace, 0, Qt::AlignLeft);
    programLayout->addStretch();
    tabs->addTab(programPage, "Programm");

    auto* note = new QLabel("Änderungen stehen erst nach dem nächsten Programmstart zur Verfügung!", this);
    note->setObjectName("Label11");
    note->setStyleSheet("color: #a00000;");
    auto* save = new QPushButton("&Speichern", this);
    save->setObjectName("xpButton1");
    save->setDefault(true);
    auto* back = new QPushButton("&Zurück", this);
    back->setObjectName("abbr");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(note, 1);
    buttons->addWidget(save);
    buttons->addWidget(back);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(headline);
    layout->addWidget(tabs, 1);
    layout->addLayout(buttons);

    connect(m_option1, &QRadioButton::clicked, this, [this] {
        takeEdits();
        m_logic.chooseOption1();
        showFields();
    });
    connect(m_option2, &QRadioButton::clicked, this, [this] {
        takeEdits();
        m_logic.chooseOption2();
        showFields();
    });
    connect(m_date, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_showing)
            m_logic.setDateAtStart(on ? 1 : 0);
    });
    connect(m_ruler, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_showing)
            m_logic.setRuler(on ? 1 : 0);
        m_ruler->setText(qt(OptionenLogic::rulerCaption(on ? 1 : 0)));
    });
    connect(m_tips, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_showing)
            m_logic.setTipsAtStartup(on ? 1 : 0);
    });
    connect(dropPlace, &QPushButton::clicked, this, [this] { m_logic.deletePlaceOfIssue(); });
    connect(take, &QToolButton::clicked, this, [this] {
        takeEdits();
        m_logic.takeReceiptType();
    });
    connect(dropType, &QToolButton::clicked, this, [this] {
        m_logic.deleteReceiptType();
        showFields();
    });
    connect(dropStyle, &QToolButton::clicked, this, [this] {
        m_logic.deleteButtonStyle();
        showFields();
    });
    connect(dropRuler, &QToolButton::clicked, this, [this] { m_logic.deleteRuler(); });
    connect(save, &QPushButton::clicked, this, [this] {
        takeEdits();
        m_logic.save();
        accept();
    });
    connect(back, &QPushButton::clicked, this, &QDialog::reject);
    showFields();
}

void optionen::laden()
{
    try {
        m_logic.load();
    } catch (const RunError&) {
        showFields();
        throw;
    }
    showFields();
}

void optionen::showFields()
{
    m_showing = true;
    const auto& fields = m_logic.fields();
    m_option1->setChecked(fields.rateChoice == 1);
    m_option2->setChecked(fields.rateChoice == 2);
    m_rate->setText(qt(fields.mwstwert1));
    m_rate->setReadOnly(fields.rateLocked);
    m_rate->setEnabled(!fields.rateLocked);
    m_abstand->setText(qt(fields.abstand));
    m_anzahl->setText(qt(fields.anzahl));
    m_oben->setText(qt(fields.oben));
    m_number->setText(qt(fields.Text1));
    m_type->setText(qt(fields.belegart_opt));
    m_buttonStyle->setText(qt(fields.Label12));
    m_calculation->setChecked(fields.checkGB_Berechnung != 0);
    m_date->setChecked(fields.xpCheck1 != 0);
    m_ruler->setChecked(fields.ruler_check1 != 0);
    m_ruler->setText(qt(OptionenLogic::rulerCaption(fields.ruler_check1)));
    m_tips->setChecked(fields.chkLoadTipsAtStartup != 0);
    m_showing = false;
}

void optionen::takeEdits()
{
    auto& fields = m_logic.fields();
    fields.mwstwert1 = m_rate->text().toStdString();
    fields.abstand = m_abstand->text().toStdString();
    fields.anzahl = m_anzahl->text().toStdString();
    fields.oben = m_oben->text().toStdString();
    fields.Text1 = m_number->text().toStdString();
    fields.belegart_opt = m_type->text().toStdString();
    fields.checkGB_Berechnung = m_calculation->isChecked() ? 1 : 0;
}

} // namespace zw
