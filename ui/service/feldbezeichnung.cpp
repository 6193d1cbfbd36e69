#include "ui/service/feldbezeichnung.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/ReceiptForm.h"
#include "core/Settings.h"
#include "ui/frame/QtText.h"
#include "ui/service/ServiceControls.h"

namespace zw {

using servicewindows::button;

feldbezeichnung::feldbezeichnung(Settings& settings, ReceiptForm& form, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_form(form)
{
    setObjectName("feldbezeichnung");
    setWindowTitle("Feldbezeichnung ändern");
    setModal(true);
    auto* frame = new QGroupBox(" Feldbezeichnungen ", this);
    auto* grid = new QGridLayout(frame);
    const auto current = currentFieldLabels(form);
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const int row = static_cast<int>(i);
        auto* caption = new QLabel(QString("Bezeichnung %1:").arg(row + 1, 2, 10, QChar('0')), frame);
        m_fields[i] = new QLineEdit(qt(current[i]), frame);
        m_fields[i]->setObjectName(QString("sevText%1").arg(row + 1));
        m_fields[i]->setMinimumWidth(260);
        caption->setBuddy(m_fields[i]);
        grid->addWidget(caption, row, 0);
        grid->addWidget(m_fields[i], row, 1);
        grid->addWidget(new QLabel(qt(kFieldLabelHints[i]), frame), row, 2);
    }
    m_bar = new QProgressBar(this);
    m_bar->setObjectName("ProgressBar1");
    m_bar->setRange(0, 100);
    m_bar->hide();
    auto* saveKey = button("Command3", "&Speichern", this);
    auto* resetKey = button("Command2", "Zu&rücksetzen", this);
    resetKey->setToolTip("Originalbezeichnungen werden eingelesen.");
    auto* back = button("Command1", "&Zurück", this);
    m_keys = {saveKey, resetKey, back};
    auto* keys = new QHBoxLayout;
    keys->addWidget(saveKey);
    keys->addWidget(resetKey);
    keys->addWidget(m_bar, 1);
    keys->addStretch();
    keys->addWidget(back);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(keys);
    connect(saveKey, &QPushButton::clicked, this, &feldbezeichnung::save);
    connect(resetKey, &QPushButton::clicked, this, &feldbezeichnung::reset);
    connect(back, &QPushButton::clicked, this, &QDialog::reject);
}

void feldbezeichnung::reset()
{
    const auto texts = resetFieldLabels();
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        m_fields[i]->setText(qt(texts[i]));
}

void feldbezeichnung::save()
{
    for (auto* button : m_keys)
        button->hide();
    m_bar->setValue(0);
    m_bar->show();
    FieldLabelTexts texts;
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        texts[i] = m_fields[i]->text().toStdString();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    saveFieldLabels(m_settings, m_form, texts, [this](int value) {
        m_bar->setValue(value);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    });
    accept();
    QApplication::restoreOverrideCursor();
}

} // namespace zw
