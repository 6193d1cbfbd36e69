#pragma once

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace zw::test {

// Answers every message box "no" (or closes it) as it opens, noting it as "title: first line". The window tests of
// nested modal windows use it beside `inModal`, since a message may open while a test's own window is up.
class MessageAnswerer
{
public:
    MessageAnswerer()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr ||
                (dialog->objectName() != "MessageDialog" && dialog->objectName() != "MessageBox"))
                return;
            auto* text = dialog->findChild<QLabel*>("text");
            boxes.push_back(dialog->windowTitle() + ": " + (text ? text->text().section('\n', 0, 0) : QString()));
            QStringList captions;
            for (auto* key : dialog->findChildren<QPushButton*>())
                captions << key->text();
            keys.push_back(dialog->windowTitle() + ": " + captions.join(" / "));
            if (inspect)
                inspect(*dialog);
            dialog->reject();
        });
        m_timer.start(20);
    }
    std::vector<QString> boxes;
    std::vector<QString> keys; // "title: first key / second key ..."
    std::function<void(QDialog&)> inspect; // runs while the box is up

private:
    QTimer m_timer;
};

// Runs `act` on the modal window that `open` brings up, then closes that window.
inline void inModal(const std::function<void()>& open, const std::function<void(QDialog&)>& act)
{
    QTimer::singleShot(50, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        act(*dialog);
        dialog->reject();
    });
    open();
}

// Lets the window's events run until `condition` holds, ten seconds at most.
inline bool waitFor(const std::function<bool()>& condition)
{
    for (int i = 0; i < 400 && !condition(); ++i)
        QTest::qWait(25);
    return condition();
}

} // namespace zw::test
