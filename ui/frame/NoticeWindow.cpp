#include "ui/frame/NoticeWindow.h"

#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

namespace zw {

NoticeWindow::NoticeWindow(QWidget* parent, Notice notice) : QDialog(parent), m_notice(notice)
{
    const NoticeText text = noticeText(notice);
    setObjectName("NoticeWindow");
    setWindowTitle(QString::fromUtf8(text.title.data(), static_cast<qsizetype>(text.title.size())));
    auto* label = new QLabel(QString::fromUtf8(text.text.data(), static_cast<qsizetype>(text.text.size())), this);
    auto* bar = new QProgressBar(this);
    bar->setRange(0, 0); // a moving bar without a known end
    bar->setTextVisible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(bar);
    setModal(true);
    setMinimumWidth(360);
    QTimer::singleShot(text.milliseconds, this, &QDialog::accept);
}

void NoticeWindow::run(QWidget* parent, Notice notice, const std::function<void()>& afterwards)
{
    QPointer<NoticeWindow> window = new NoticeWindow(parent, notice);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->exec();
    if (afterwards)
        afterwards();
}

} // namespace zw
