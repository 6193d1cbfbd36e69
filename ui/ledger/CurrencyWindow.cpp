#include "ui/ledger/CurrencyWindow.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include "app/ProgramPaths.h"
#include "ledger/Currency.h"
#include "ui/frame/QtText.h"

namespace zw {

CurrencyWindow::CurrencyWindow(QWidget* parent, CurrencyChoice& choice, const ProgramPaths& paths) : QDialog(parent)
{
    setObjectName("waehrung1");
    setWindowTitle("Andere Währung festlegen");
    auto* layout = new QVBoxLayout(this);
    auto* label1 = new QLabel("Geben Sie nun bitte in das unten aufgeführte Feld, die von Ihnen verwendete Währung "
                              "ein. Bitte verwenden Sie immer nur 3 Buchstaben z. B. EUR = EURO,  USD = Dollar.",
                              this);
    label1->setObjectName("Label1");
    label1->setWordWrap(true);
    layout->addWidget(label1);

    auto* fieldRow = new QHBoxLayout;
    m_waehr = new QLineEdit(this);
    m_waehr->setObjectName("waehr");
    m_waehr->setToolTip("<b>Währungen</b><br>Klicken Sie auf den Button um einige Währungen angezeigt zu bekommen.");
    const std::string stored = choice.storedCode();
    m_waehr->setText(stored.empty() ? QString("EUR") : qt(stored));
    auto* popup = new QToolButton(this);
    popup->setObjectName("waehrPopup");
    popup->setText("…");
    popup->setToolTip("Öffnen");
    auto* list = new QMenu(popup);
    for (const auto& code : CurrencyChoice::suggestions(paths.dataFile("waehrung.dat")))
        list->addAction(qt(code), this, [this, code] { m_waehr->setText(qt(code)); });
    popup->setMenu(list);
    popup->setPopupMode(QToolButton::InstantPopup);
    fieldRow->addWidget(m_waehr, 1);
    fieldRow->addWidget(popup);
    layout->addLayout(fieldRow);

    auto* buttons = new QHBoxLayout;
    auto* save = new QPushButton("&Speichern", this);
    save->setObjectName("Command4");
    auto* remove = new QPushButton("&Währung löschen", this);
    remove->setObjectName("Button2");
    auto* back = new QPushButton("&Zurück", this);
    back->setObjectName("Button1");
    auto* info = new QPushButton("Info's über ISO 4217", this);
    info->setObjectName("Command1");
    for (auto* button : {save, remove, back, info})
        buttons->addWidget(button);
    layout->addLayout(buttons);

    connect(save, &QPushButton::clicked, this, [this, &choice] {
        choice.save(m_waehr->text().toStdString());
        accept();
    });
    connect(remove, &QPushButton::clicked, this, [this, &choice, save, remove] {
        m_waehr->clear();
        save->setEnabled(false);
        remove->setEnabled(false);
        choice.remove();
        accept();
    });
    connect(back, &QPushButton::clicked, this, &QDialog::reject);
    connect(info, &QPushButton::clicked, this,
            [] { QDesktopServices::openUrl(QUrl("https://de.wikipedia.org/wiki/ISO_4217")); });
}

} // namespace zw
