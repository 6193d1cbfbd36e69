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

// Closes every modal window that opens, as a user pressing Escape would, after `inspect` has looked at it; a window
// that `inspect` marks with the property "zwLeaveOpen" closes itself. With `messagesOnly` it answers message boxes
// alone and leaves every other window to the test (beside `inModal`). `seen` notes each window once by its object
// name (its class name without one); each message box is noted in `messages` as "title: text", in `boxes` as
// "title: first line" and in `keys` as "title: first key / second key ...".
class ModalCloser
{
public:
    explicit ModalCloser(std::function<void(QDialog*)> look = {}, bool messagesOnly = false)
        : inspect(std::move(look))
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this, messagesOnly] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            // A window that `inspect` keeps open a while is not noted twice; a mark, since a new window may take the
            // place of an old one in memory.
            if (dialog == nullptr || !dialog->isVisible() || dialog->property("zwNoted").toBool())
                return;
            const bool message = dialog->objectName() == "MessageDialog" || dialog->objectName() == "MessageBox";
            if (messagesOnly && !message)
                return;
            dialog->setProperty("zwNoted", true);
            seen.push_back(dialog->objectName().isEmpty() ? dialog->metaObject()->className() : dialog->objectName());
            if (auto* text = dialog->findChild<QLabel*>("text"); text && message) {
                messages.push_back(dialog->windowTitle() + ": " + text->text());
                boxes.push_back(messages.back().section('\n', 0, 0));
                QStringList captions;
                for (auto* key : dialog->findChildren<QPushButton*>())
                    captions << key->text();
                keys.push_back(dialog->windowTitle() + ": " + captions.join(" / "));
            }
            if (inspect)
                inspect(dialog);
            if (dialog->isVisible() && !dialog->property("zwLeaveOpen").toBool())
                dialog->reject();
        });
        m_timer.start(20);
    }

    std::vector<QString> seen;
    std::vector<QString> messages;
    std::vector<QString> boxes;
    std::vector<QString> keys;
    std::function<void(QDialog*)> inspect; // may be set while the closer runs

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
