#include "ui/lists/frmReportSetup.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zw {

frmReportSetup::frmReportSetup(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmReportSetup");
    setWindowTitle("WebReport-Einstellungen");

    auto* title = new QLineEdit("Zettelwerk WebReport", this);
    title->setObjectName("txtReportTitle");
    auto* formatting = new QCheckBox("Farb/Schriftattribute übernehmen", this);
    formatting->setObjectName("chkUseFormating");
    auto* rows = new QComboBox(this);
    rows->setObjectName("cmbRows");
    for (int choice : kReportRowChoices)
        rows->addItem(QString::number(choice));
    rows->setCurrentText("250");
    auto* browser = new QRadioButton("Standardbrowser verwenden", this);
    browser->setObjectName("optDisplay0");
    browser->setChecked(true);
    auto* own = new QRadioButton("In eigenem Fenster anzeigen", this);
    own->setObjectName("optDisplay1");
    auto* early = new QCheckBox("Report vorzeitig anzeigen (nach 5 Seiten)", this);
    early->setObjectName("chkShow");

    auto* extended = new QGroupBox("Erweiterte Einstellungen", this);
    auto* extendedLayout = new QVBoxLayout(extended);
    auto* titleLabel = new QLabel("WebReport Titelzeile:", this);
    titleLabel->setObjectName("Label3");
    titleLabel->setBuddy(title);
    auto* rowsLabel = new QLabel("Anzahl Einträge pro Seite:", this);
    rowsLabel->setObjectName("Label2");
    rowsLabel->setBuddy(rows);
    extendedLayout->addWidget(titleLabel);
    extendedLayout->addWidget(title);
    extendedLayout->addWidget(formatting);
    auto* rowsLine = new QHBoxLayout;
    rowsLine->addWidget(rowsLabel);
    rowsLine->addWidget(rows);
    rowsLine->addStretch();
    extendedLayout->addLayout(rowsLine);
    auto* display = new QGroupBox("WebReport anzeigen...", this);
    auto* displayLayout = new QVBoxLayout(display);
    displayLayout->addWidget(browser);
    displayLayout->addWidget(own);
    displayLayout->addWidget(early);

    auto* ok = new QPushButton("&Okay", this);
    ok->setObjectName("cmdOK");
    ok->setDefault(true);
    auto* cancel = new QPushButton("&Zurück", this);
    cancel->setObjectName("cmdCancel");
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* keys = new QHBoxLayout;
    keys->addStretch();
    keys->addWidget(ok);
    keys->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(extended);
    layout->addWidget(display);
    layout->addLayout(keys);
}

ReportOptions frmReportSetup::options() const
{
    ReportOptions options;
    options.title = findChild<QLineEdit*>("txtReportTitle")->text().toStdString();
    options.carryFormatting = findChild<QCheckBox*>("chkUseFormating")->isChecked();
    options.rowsPerPage = findChild<QComboBox*>("cmbRows")->currentText().toInt();
    options.inBrowser = findChild<QRadioButton*>("optDisplay0")->isChecked();
    options.earlyDisplay = findChild<QCheckBox*>("chkShow")->isChecked();
    return options;
}

} // namespace zw
