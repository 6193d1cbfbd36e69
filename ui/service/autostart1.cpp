#include "ui/service/autostart1.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/FormHost.h"
#include "service/Autostart.h"
#include "ui/frame/QtText.h"
#include "ui/service/ServiceControls.h"

namespace zw {

using servicewindows::button;

autostart1::autostart1(const std::string& programPath, FormHost& host, QWidget* parent)
    : QDialog(parent), m_host(host)
{
    setObjectName("autostart1");
    setWindowTitle("Autostartfunktion");
    setModal(true);
    auto* text = new QLabel("Soll das Programm beim Anmelden am Desktop automatisch gestartet werden?", this);
    text->setWordWrap(true);
    m_filename = new QLineEdit(qt(programPath), this);
    m_filename->setObjectName("txtFilename");
    m_filename->setReadOnly(true);
    m_filename->setToolTip("Hier kann nichts verändert werden.");
    m_filename->setMinimumWidth(m_filename->fontMetrics().horizontalAdvance(m_filename->text()) + 24);
    m_add = button("Command1", "&Eintragen", this);
    auto* remove = button("Command3", "E&ntfernen", this);
    auto* close = button("Command2", "&Schließen", this);
    auto* keys = new QHBoxLayout;
    keys->addWidget(m_add);
    keys->addWidget(remove);
    keys->addStretch();
    keys->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(m_filename);
    layout->addLayout(keys);
    connect(m_add, &QPushButton::clicked, this, [this] {
        const std::string path = m_filename->text().toStdString();
        if (SetAutoRun(autostartFolder(), autostartName(path), path)) {
            m_host.showMessage("Der Eintrag war erfolgreich.", MessageStyle::Information, "Autostart");
            m_add->setEnabled(false);
        } else {
            m_host.showMessage("Der Eintrag ist fehlgeschlagen!", MessageStyle::Information, "Autostart");
        }
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        RemoveAutoRun(autostartFolder(), autostartName(m_filename->text().toStdString()));
        m_host.showMessage("Der Eintrag wurde entfernt!", MessageStyle::Information, "Autostart");
        m_add->setEnabled(true);
    });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

} // namespace zw
