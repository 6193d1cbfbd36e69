#include "ui/mail/MailControls.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextList>
#include <QToolBar>
#include <optional>
#include <string>

#include "mail/sevSMTP.h"
#include "ui/frame/QtText.h"
#include "ui/mail/frmLog.h"

namespace zw {

namespace {

// One attribute over the editor's selection: the same on every character, or nothing where the selection mixes
// it (the old editor's Null). Without a selection, the format at the caret.
template <typename Read> std::optional<bool> selectionState(const QTextEdit* editor, Read read)
{
    const QTextCursor cursor = editor->textCursor();
    if (!cursor.hasSelection())
        return read(editor->currentCharFormat());
    const int start = cursor.selectionStart();
    const int end = cursor.selectionEnd();
    std::optional<bool> state;
    for (QTextBlock block = editor->document()->findBlock(start); block.isValid() && block.position() < end;
         block = block.next()) {
        for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
            const QTextFragment fragment = piece.fragment();
            if (fragment.position() + fragment.length() <= start || fragment.position() >= end)
                continue;
            const bool value = read(fragment.charFormat());
            if (state && *state != value)
                return std::nullopt;
            state = value;
        }
    }
    return state ? state : read(editor->currentCharFormat());
}

} // namespace

namespace mailwindows {

QPushButton* button(const char* name, const char* caption, QWidget* parent)
{
    auto* key = new QPushButton(caption, parent);
    key->setObjectName(name);
    key->setAutoDefault(false);
    return key;
}

QLineEdit* field(const char* name, QWidget* parent)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    return edit;
}

std::string text(const QLineEdit* edit) { return edit->text().toStdString(); }

void followSession(sevSMTP& smtp, QLabel* status, QProgressBar* progress, frmLog& log)
{
    smtp.OnProgress = [progress](int percent) {
        progress->setValue(percent);
        QApplication::processEvents();
    };
    smtp.OnMessageStart = [status, progress] {
        status->setText("Nachricht wird versandt...");
        progress->setValue(0);
        QApplication::processEvents();
    };
    smtp.OnLog = [&log](const std::string& piece) { log.add(piece); };
}

QToolBar* richTextToolbar(QTextEdit* message, QWidget* parent)
{
    auto* toolbar = new QToolBar(parent);
    toolbar->setObjectName("Coolbar2");
    const auto toggle = [message, toolbar](const char* key, const char* caption, auto read, auto write) {
        QAction* action = toolbar->addAction(caption);
        action->setObjectName(key);
        QObject::connect(action, &QAction::triggered, toolbar, [message, read, write] {
            // A mixed selection reads as Null, and Null negated stays Null: nothing changes.
            if (const std::optional<bool> state = selectionState(message, read)) {
                QTextCharFormat format;
                write(format, !*state);
                message->mergeCurrentCharFormat(format);
            }
            message->setFocus();
        });
        return action;
    };
    toggle("fett", "F", [](const QTextCharFormat& f) { return f.fontWeight() > QFont::Normal; },
           [](QTextCharFormat& f, bool on) { f.setFontWeight(on ? QFont::Bold : QFont::Normal); });
    toggle("kursiv", "K", [](const QTextCharFormat& f) { return f.fontItalic(); },
           [](QTextCharFormat& f, bool on) { f.setFontItalic(on); });
    toggle("unterstrichen", "U", [](const QTextCharFormat& f) { return f.fontUnderline(); },
           [](QTextCharFormat& f, bool on) { f.setFontUnderline(on); });
    toggle("durchgestrichen", "S", [](const QTextCharFormat& f) { return f.fontStrikeOut(); },
           [](QTextCharFormat& f, bool on) { f.setFontStrikeOut(on); });
    toolbar->addSeparator();
    QAction* font = toolbar->addAction("Schriftart");
    font->setObjectName("schriftart");
    QObject::connect(font, &QAction::triggered, toolbar, [message, parent] {
        bool chosen = false;
        const QFont picked = QFontDialog::getFont(&chosen, message->currentFont(), parent);
        if (chosen)
            message->setCurrentFont(picked);
        message->setFocus();
    });
    QAction* colour = toolbar->addAction("Farbe");
    colour->setObjectName("schriftfarbe");
    QObject::connect(colour, &QAction::triggered, toolbar, [message, parent] {
        const QColor picked = QColorDialog::getColor(message->textColor(), parent);
        if (picked.isValid())
            message->setTextColor(picked);
        message->setFocus();
    });
    toolbar->addSeparator();
    QAction* bullets = toolbar->addAction("Aufzählung");
    bullets->setObjectName("aufzaehlung");
    QObject::connect(bullets, &QAction::triggered, toolbar, [message] {
        QTextCursor cursor = message->textCursor();
        if (QTextList* list = cursor.currentList()) {
            QTextBlockFormat block = cursor.blockFormat();
            list->remove(cursor.block());
            block.setIndent(0);
            cursor.setBlockFormat(block);
        } else {
            cursor.createList(QTextListFormat::ListDisc);
        }
        message->setFocus();
    });
    toolbar->addSeparator();
    const std::pair<const char*, Qt::Alignment> alignments[] = {
        {"links", Qt::AlignLeft}, {"mitte", Qt::AlignHCenter}, {"rechts", Qt::AlignRight}};
    const char* alignCaptions[] = {"Links", "Mitte", "Rechts"};
    for (std::size_t i = 0; i < 3; ++i) {
        QAction* action = toolbar->addAction(alignCaptions[i]);
        action->setObjectName(alignments[i].first);
        action->setCheckable(true);
        action->setChecked(i == 0);
        QObject::connect(action, &QAction::triggered, toolbar, [message, toolbar, action, align = alignments[i].second] {
            message->setAlignment(align);
            for (const char* key : {"links", "mitte", "rechts"})
                toolbar->findChild<QAction*>(key)->setChecked(false);
            action->setChecked(true);
            message->setFocus();
        });
    }
    return toolbar;
}

} // namespace mailwindows

using namespace mailwindows;

void AccountFields::show(const MailAccount& account) const
{
    name->setText(qt(account.name));
    company->setText(qt(account.company));
    address->setText(qt(account.address));
    server->setText(qt(account.server));
    auth->setChecked(account.auth == 1);
    user->setText(qt(account.user));
    password->setText(qt(account.password));
}

MailAccount AccountFields::read() const
{
    return {text(name), text(company), text(address), text(server), auth->isChecked() ? 1 : 0, text(user),
            text(password)};
}

} // namespace zw
