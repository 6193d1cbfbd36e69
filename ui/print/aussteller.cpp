#include "ui/print/aussteller.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/print/PrintControls.h"

namespace zw {

using printwindows::addSaveAndLeave;
using printwindows::button;
using printwindows::fromBox;
using printwindows::toBox;

aussteller::aussteller(IssuerData& issuers, const IssuerEntry& entry, QWidget* parent)
    : QDialog(parent), m_issuers(issuers)
{
    setObjectName("aussteller");
    setWindowTitle("Aussteller");
    m_text = new QPlainTextEdit(toBox(entry.text), this);
    m_text->setObjectName("RTFBox");
    m_taxNumber = new QLineEdit(QString::fromStdString(entry.taxNumber), this);
    m_taxNumber->setObjectName("steuernummer2");
    m_showTaxNumber = new QCheckBox("Steuernummer anzeigen", this);
    m_showTaxNumber->setObjectName("steuernummer1");
    m_showTaxNumber->setChecked(entry.showTaxNumber);
    m_note = new QLineEdit(QString::fromStdString(entry.exemptionNote), this);
    m_note->setObjectName("para19");
    // The note shows whole, up to a width that still fits a small screen.
    m_note->setMinimumWidth(std::min(m_note->fontMetrics().horizontalAdvance(m_note->text()) + 16, 640));
    auto* save = button("xpButton1", "&Speichern", this);
    auto* leave = button("xpButton2", "&Abbrechen", this);
    connect(save, &QPushButton::clicked, this, [this] {
        m_issuers.saveAussteller({fromBox(m_text), m_taxNumber->text().toStdString(), m_showTaxNumber->isChecked(),
                                  m_note->text().toStdString()});
        accept();
    });
    connect(leave, &QPushButton::clicked, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel("Aussteller", this));
    layout->addWidget(m_text);
    layout->addWidget(new QLabel("Steuernummer:", this));
    layout->addWidget(m_taxNumber);
    layout->addWidget(m_showTaxNumber);
    layout->addWidget(m_note);
    addSaveAndLeave(layout, save, leave);
}

} // namespace zw
