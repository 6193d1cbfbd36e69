#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zw {

// Style numbers of the message box, as the program passes them.
enum class MessageStyle : int {
    Error = 16,
    QuestionOkCancel = 33,
    QuestionYesNo = 36,
    Warning = 48,
    Information = 64,
};

inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;
inline constexpr int kAnswerOk = 1;
inline constexpr int kAnswerCancel = 2;

// The small status windows that close themselves.
enum class Notice { neue_quittung, optionen1, aussteller1, kopieren1, export1, export2 };

struct NoticeText
{
    std::string_view title;
    std::string_view text;
    int milliseconds;
};

NoticeText noticeText(Notice notice);

// What the receipt logic needs of a window: messages, questions, notices, a beep, other windows.
// The Qt main window implements it; tests record the calls.
class FormHost
{
public:
    virtual ~FormHost() = default;

    virtual void showMessage(std::string_view text, MessageStyle style, std::string_view title) = 0;
    // Returns kAnswerYes / kAnswerNo / kAnswerOk / kAnswerCancel.
    virtual int confirmQuestion(std::string_view text, MessageStyle style, std::string_view title) = 0;
    // ShowMessage asked as a question: its "JA" answers kAnswerYes, its "OK" kAnswerOk.
    virtual int askByMessage(std::string_view text, MessageStyle style, std::string_view title)
    {
        return confirmQuestion(text, style, title);
    }
    // The platform's own message box, where a routine asks without the MessageDialog: the buttons of its style
    // number (4 "Ja" and "Nein"), answering kAnswerYes, kAnswerNo, kAnswerOk or kAnswerCancel.
    virtual int messageBox(std::string_view text, int style, std::string_view title)
    {
        return confirmQuestion(text, static_cast<MessageStyle>(style), title);
    }
    // nullopt when the user cancels.
    virtual std::optional<std::string> askText(std::string_view text, MessageStyle style, std::string_view title,
                                               std::string_view initial) = 0;
    virtual void showNotice(Notice notice) = 0;
    virtual void beep() = 0;
    // Opens another window by its internal name ("optionen"); a window that must be answered first opens modally.
    virtual void openWindow(std::string_view name) = 0;
};

} // namespace zw
