#pragma once

#include <QDialog>
#include <functional>

#include "core/FormHost.h"

namespace zw {

// A small status window: title, one line of text, a moving bar; its timer closes it.
class NoticeWindow : public QDialog
{
public:
    NoticeWindow(QWidget* parent, Notice notice);

    // Shows the window modally until its timer runs out. The handler of export2 runs `afterwards`.
    static void run(QWidget* parent, Notice notice, const std::function<void()>& afterwards = {});

    Notice notice() const { return m_notice; }

private:
    Notice m_notice;
};

} // namespace zw
