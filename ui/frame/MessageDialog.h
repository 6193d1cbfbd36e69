#pragma once

#include <QDialog>
#include <QStringList>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/FormHost.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace zw {

// The one message dialog of the program, with its four call shapes. ShowMessage has the buttons "OK" and
// "JA"; the other shapes "Okay", "Abbrechen" and "Hilfe", whatever the style. "Hilfe" runs `openHelp`, which shows
// the handbook. Light yellow background, as the program always had.
class MessageDialog : public QDialog
{
public:
    using HelpOpener = std::function<void()>;

    // "OK" answers kAnswerOk, "JA" kAnswerYes, so a question asked in this shape goes on at "JA" only.
    static int showMessage(QWidget* parent, std::string_view text, MessageStyle style, std::string_view title);
    static int confirmQuestion(QWidget* parent, std::string_view text, MessageStyle style, std::string_view title,
                               const HelpOpener& openHelp);
    static std::optional<std::string> askText(QWidget* parent, std::string_view text, MessageStyle style,
                                              std::string_view title, std::string_view initial,
                                              const HelpOpener& openHelp);

    // The message shape with a window's own button captions: the first answers yes, every other no.
    static int askWithCaptions(QWidget* parent, std::string_view text, MessageStyle style, std::string_view title,
                               const QStringList& captions);

    // The platform's own message box, where a window asks without this dialog: the buttons its style number names
    // (0 "OK", 1 "OK" and "Abbrechen", 4 "Ja" and "Nein"; 256 makes the second the default), the icon of 16, 32,
    // 48 or 64, no help and no colour of its own. Answers kAnswerOk, kAnswerCancel, kAnswerYes or kAnswerNo.
    static int messageBox(QWidget* parent, std::string_view text, int style, std::string_view title);
    // The windows of the cash book and the exports tell their results in this box: one OK, as a desktop box has.
    static int messageBox(QWidget* parent, std::string_view text, MessageStyle style, std::string_view title)
    {
        return messageBox(parent, text, static_cast<int>(style), title);
    }

private:
    enum class Shape { Message, Question, Text, Box };
    MessageDialog(QWidget* parent, Shape shape, std::string_view text, int style, std::string_view title,
                  std::string_view initial, const HelpOpener& openHelp, const QStringList& captions = {});

    int m_answer = kAnswerCancel;
    QLineEdit* m_input = nullptr;
};

} // namespace zw
