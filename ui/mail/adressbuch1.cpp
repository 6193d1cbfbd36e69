#include "ui/mail/adressbuch1.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <string>

#include "ui/frame/QtText.h"
#include "ui/mail/MailControls.h"

namespace zw {

using namespace mailwindows;

adressbuch1::adressbuch1(Purpose purpose, const std::vector<std::string>& fields, QWidget* parent) : QDialog(parent)
{
    setObjectName("adressbuch1");
    setWindowTitle("Adressbuch");
    auto* layout = new QVBoxLayout(this);
    auto* heading = new QLabel(purpose == Purpose::Add ? "Neuen Kontakt hinzufügen" : "Vorhandenen Kontakt bearbeiten",
                               this);
    heading->setObjectName("Label1");
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    layout->addWidget(heading);
    auto* form = new QFormLayout;
    const std::pair<const char*, const char*> names[] = {
        {"txtEmail", "E-Mail:"}, {"txtVorname", "Vorname:"}, {"txtNachname", "Nachname:"}, {"txtAnrede", "Anrede:"}};
    for (std::size_t i = 0; i < 4; ++i) {
        auto* edit = field(names[i].first, this);
        edit->setText(i < fields.size() ? qt(fields[i]) : QString());
        edit->setMinimumWidth(260);
        form->addRow(names[i].second, edit);
        m_fields.push_back(edit);
    }
    layout->addLayout(form);
    auto* keys = new QHBoxLayout;
    keys->addStretch();
    auto* confirm = purpose == Purpose::Add ? button("Command1", "&Hinzufügen", this)
                                            : button("Command3", "&Editieren", this);
    confirm->setDefault(true);
    auto* cancel = button("Command2", "&Abbrechen", this);
    connect(confirm, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    keys->addWidget(confirm);
    keys->addWidget(cancel);
    layout->addLayout(keys);
}

std::vector<std::string> adressbuch1::fields() const
{
    std::vector<std::string> values;
    for (const QLineEdit* edit : m_fields)
        values.push_back(text(edit));
    return values;
}

} // namespace zw
