#include "ui/mail/WizardDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "ui/mail/MailControls.h"

namespace zw {

using namespace mailwindows;

WizardDialog::WizardDialog(QWidget* parent, const char* lastCaption) : QDialog(parent), m_lastCaption(lastCaption)
{
    m_stack = new QStackedWidget(this);
    m_stack->setObjectName("sevWizard1");
    m_back = button("cmdBack", "< &Zurück", this);
    m_next = button("cmdNext", "&Weiter >", this);
    m_next->setDefault(true);
    connect(m_back, &QPushButton::clicked, this, [this] { showPage(m_page - 1); });
    connect(m_next, &QPushButton::clicked, this, [this] {
        if (onLastPage())
            finish();
        else
            showPage(m_page + 1);
    });
}

QVBoxLayout* WizardDialog::addPage(const char* name, const QString& step, const QString& text)
{
    auto* widget = new QWidget(m_stack);
    widget->setObjectName(name);
    auto* layout = new QVBoxLayout(widget);
    if (!step.isEmpty()) {
        auto* header = new QLabel(QString("<b>%1</b><br>%2").arg(step.toHtmlEscaped(), text.toHtmlEscaped()), widget);
        header->setObjectName("header");
        header->setWordWrap(true);
        layout->addWidget(header);
    }
    m_stack->addWidget(widget);
    m_pages.push_back(widget);
    return layout;
}

QLabel* WizardDialog::wrappedLabel(const char* name, const QString& caption, QWidget* owner)
{
    auto* label = new QLabel(caption, owner);
    label->setObjectName(name);
    label->setWordWrap(true);
    return label;
}

QLabel* WizardDialog::welcomeHeading(const QString& caption, QWidget* owner)
{
    auto* heading = wrappedLabel("Label1", caption, owner);
    QFont big = heading->font();
    big.setPointSize(big.pointSize() + 4);
    big.setBold(true);
    heading->setFont(big);
    return heading;
}

void WizardDialog::layOut(std::initializer_list<QWidget*> leftKeys, QPushButton* cancel)
{
    auto* keys = new QHBoxLayout;
    for (QWidget* key : leftKeys)
        keys->addWidget(key);
    keys->addStretch();
    keys->addWidget(m_back);
    keys->addWidget(m_next);
    keys->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_stack, 1);
    layout->addLayout(keys);
}

void WizardDialog::showPage(int page)
{
    m_page = std::clamp(page, 0, static_cast<int>(m_pages.size()) - 1);
    m_stack->setCurrentIndex(m_page);
    m_back->setEnabled(m_page > 0);
    m_next->setText(onLastPage() ? m_lastCaption : "&Weiter >");
    if (auto* first = m_pages[static_cast<std::size_t>(m_page)]->findChild<QLineEdit*>())
        first->setFocus();
    else
        m_next->setFocus();
    pageShown();
}

} // namespace zw
