#include "ui/print/aussteller_pro.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "ui/print/PrintControls.h"

namespace zw {

using printwindows::button;
using printwindows::fromBox;
using printwindows::toBox;

aussteller_pro::aussteller_pro(IssuerData& issuers, const std::array<IssuerPage, 3>& pages, QWidget* parent)
    : QDialog(parent), m_issuers(issuers)
{
    setObjectName("aussteller_pro");
    setWindowTitle("3 Aussteller verwalten");
    m_tabs = new QTabWidget(this);
    // All three tabs stand side by side; scroll arrows would hide the third.
    m_tabs->setUsesScrollButtons(false);
    for (int i = 0; i < 3; ++i) {
        auto* page = new QWidget(m_tabs);
        m_texts[i] = new QPlainTextEdit(toBox(pages[static_cast<std::size_t>(i)].text), page);
        m_texts[i]->setObjectName(QString("sevText%1").arg(i + 1));
        m_taxNumbers[i] = new QLineEdit(QString::fromStdString(pages[static_cast<std::size_t>(i)].taxNumber), page);
        m_taxNumbers[i]->setObjectName(QString("sevText4_%1").arg(i));
        auto* choose = new QRadioButton("Speichern und im Beleg anzeigen", page);
        choose->setObjectName(QString("xpOption1_%1").arg(i));
        connect(choose, &QRadioButton::clicked, this, [this, i] {
            m_issuers.chooseIssuer(i, {fromBox(m_texts[i]), m_taxNumbers[i]->text().toStdString()});
        });
        auto* layout = new QVBoxLayout(page);
        layout->addWidget(m_texts[i]);
        layout->addWidget(new QLabel("Steuernummer:", page));
        layout->addWidget(m_taxNumbers[i]);
        layout->addWidget(choose);
        m_tabs->addTab(page, QString("Aussteller %1").arg(i + 1));
    }
    auto* close = button("Command1", "&Schließen", this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addWidget(close, 0, Qt::AlignRight);
}

} // namespace zw
