#include "ui/print/IssuerWindows.h"
#include "ui/frame/QtText.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace zw {
namespace {

QString toBox(const std::string& text)
{
    QString shown = qt(text);
    shown.replace("\r\n", "\n");
    return shown;
}

// The text boxes hold LF; the files and the form hold CR LF.
std::string fromBox(const QPlainTextEdit* box)
{
    QString text = box->toPlainText();
    text.replace("\n", "\r\n");
    return text.toStdString();
}

QPushButton* button(const char* name, const char* caption, QWidget* parent)
{
    auto* result = new QPushButton(caption, parent);
    result->setObjectName(name);
    return result;
}

} // namespace

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
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(leave);
    layout->addLayout(buttons);
}

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

PictureFileWindow::PictureFileWindow(PictureCommands& commands, PictureKind kind, QWidget* parent)
    : QDialog(parent), m_commands(commands), m_kind(kind)
{
    const bool logo = kind == PictureKind::Logo;
    setObjectName(logo ? "logodatei" : "stunter");
    setWindowTitle(logo ? "Logodatei wählen" : "Stempel-/ Unterschriftsdatei wählen");
    m_file = new QLineEdit(this);
    m_file->setObjectName(logo ? "logo" : "stempel");
    auto* browse = new QToolButton(this);
    browse->setText("...");
    connect(browse, &QToolButton::clicked, this, [this] {
        QString file = QFileDialog::getOpenFileName(this, "Öffnen", m_file->text(), "JPG (*.JPG *.jpg);;BMP (*.BMP *.bmp)");
        if (!file.isEmpty())
            m_file->setText(file);
    });
    auto* everyStart = new QCheckBox(logo ? "Logo bei jedem Neustart anzeigen"
                                          : "Stempel-/Unterschrift bei jedem Neustart anzeigen",
                                     this);
    everyStart->setObjectName(logo ? "logoanaus" : "unteranaus");
    const PictureFileChoice choice = m_commands.openFileWindow(kind, m_file->text().toStdString());
    m_file->setText(QString::fromStdString(choice.path));
    everyStart->setChecked(choice.everyStart);
    connect(everyStart, &QCheckBox::clicked, this, [this](bool on) { m_commands.setEveryStart(m_kind, on); });
    auto* save = button("xpButton1", "&Speichern", this);
    connect(save, &QPushButton::clicked, this, [this] {
        m_commands.saveFile(m_kind, m_file->text().toStdString());
        accept();
    });
    auto* leave = button("xpButton2", "&Abbrechen", this);
    connect(leave, &QPushButton::clicked, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    auto* headline = new QLabel(windowTitle(), this);
    QFont bold = headline->font();
    bold.setBold(true);
    headline->setFont(bold);
    layout->addWidget(headline);
    layout->addWidget(new QLabel(logo ? "Empfohlene Größe: 313 x 97 Pixel. Sollte sie größer sein, wird Sie dem Feld "
                                        "angepasst."
                                      : "Empfohlene Größe: 257 x 57 Pixel. Sollte sie größer sein, wird Sie dem Feld "
                                        "angepasst.",
                                 this));
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_file, 1);
    fileRow->addWidget(browse);
    layout->addLayout(fileRow);
    layout->addWidget(everyStart);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(leave);
    layout->addLayout(buttons);
}

} // namespace zw
