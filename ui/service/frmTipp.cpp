#include "ui/service/frmTipp.h"

#include <QCheckBox>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

#include "app/ProgramPaths.h"
#include "app/Clock.h"
#include "core/Settings.h"
#include "ui/frame/FaultTrap.h"
#include "ui/frame/QtText.h"
#include "ui/service/ServiceControls.h"

namespace zw {

using servicewindows::button;
using servicewindows::lines;

frmTipp::frmTipp(const ProgramPaths& paths, Settings& settings, FormHost& host, Random& random, QWidget* parent)
    : QDialog(parent), m_host(host)
{
    setObjectName("frmTipp");
    setWindowTitle("Tipp des Tages");
    setModal(true);
    m_caption = new QLabel(this);
    m_caption->setObjectName("lblTipCaption");
    QFont bold = m_caption->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    m_caption->setFont(bold);
    m_content = new QTextEdit(this);
    m_content->setObjectName("txtTipContent");
    m_content->setReadOnly(true);
    m_content->setMinimumSize(420, 150);
    m_count = new QLabel(this);
    m_count->setObjectName("lblCount");

    m_bottom = new QWidget(this);
    m_bottom->setObjectName("picBottom");
    auto* startUp = new QCheckBox("Tipps beim &Programmstart anzeigen", m_bottom);
    startUp->setObjectName("chkLoadTipsAtStartup");
    startUp->setChecked(tipsAtStartup(settings));
    auto* previous = button("xpButton1", "&Vorheriger Tipp", m_bottom);
    auto* next = button("cmdNextTip", "&Nächster Tipp", m_bottom);
    auto* ok = button("cmdOK", "&OK", m_bottom);
    ok->setDefault(true);
    auto* bottom = new QHBoxLayout(m_bottom);
    bottom->addWidget(startUp);
    bottom->addStretch();
    bottom->addWidget(previous);
    bottom->addWidget(next);
    bottom->addWidget(ok);

    auto* layout = new QVBoxLayout(this);
    auto* head = new QHBoxLayout;
    head->addWidget(m_caption, 1);
    head->addWidget(m_count);
    layout->addLayout(head);
    layout->addWidget(m_content, 1);
    layout->addWidget(m_bottom);

    connect(startUp, &QCheckBox::toggled, this, [&settings](bool on) { setTipsAtStartup(settings, on); });
    connect(next, &QPushButton::clicked, this, [this] {
        m_tips.next();
        showTip();
    });
    connect(previous, &QPushButton::clicked, this, [this] {
        m_tips.previous();
        showTip();
    });
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    if (m_tips.LoadTips(paths.dataFile("Tipofday.txt"), [source = &random] { return source->next(); }) &&
        m_tips.count() > 0)
        showTip();
}

void frmTipp::showTip()
{
    // A tip that cannot be shown is a message; the window stays.
    faulttrap::trapped([this] {
        const auto shown = m_tips.DisplayCurrentTip();
        m_caption->setText(qt(shown.caption));
        m_content->setPlainText(lines(shown.content));
        m_count->setText(qt(shown.count));
    })();
}

void frmTipp::paintEvent(QPaintEvent* event)
{
    QDialog::paintEvent(event);
    QPainter painter(this);
    const QRect area = m_bottom->geometry();
    QLinearGradient gradient(area.topLeft(), area.bottomLeft());
    gradient.setColorAt(0, QColor(255, 231, 162));
    gradient.setColorAt(1, QColor(255, 172, 66));
    painter.fillRect(area, gradient);
}

} // namespace zw
