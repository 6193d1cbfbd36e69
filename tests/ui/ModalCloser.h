#pragma once

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTimer>
#include <functional>
#include <vector>

namespace zw::test {

// Closes every modal window that opens, as a user pressing Escape would, after `inspect` has looked at it; a window
// that `inspect` marks with the property "zwLeaveOpen" closes itself. `seen` notes each window once by its object
// name (its class name without one); `messages` notes each message box as "title: text".
class ModalCloser
{
public:
    explicit ModalCloser(std::function<void(QDialog*)> inspect = {}) : m_inspect(std::move(inspect))
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            // A window that `inspect` keeps open a while is not noted twice; a mark, since a new window may take the
            // place of an old one in memory.
            if (dialog == nullptr || !dialog->isVisible() || dialog->property("zwNoted").toBool())
                return;
            dialog->setProperty("zwNoted", true);
            seen.push_back(dialog->objectName().isEmpty() ? dialog->metaObject()->className() : dialog->objectName());
            const bool message = dialog->objectName() == "MessageDialog" || dialog->objectName() == "MessageBox";
            if (auto* text = dialog->findChild<QLabel*>("text"); text && message)
                messages.push_back(dialog->windowTitle() + ": " + text->text());
            if (m_inspect)
                m_inspect(dialog);
            if (dialog->isVisible() && !dialog->property("zwLeaveOpen").toBool())
                dialog->reject();
        });
        m_timer.start(20);
    }

    std::vector<QString> seen;
    std::vector<QString> messages;

private:
    QTimer m_timer;
    std::function<void(QDialog*)> m_inspect;
};

} // namespace zw::test
