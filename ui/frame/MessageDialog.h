#pragma once

#include <QDialog>
#include <QStringList>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/FormHost.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace zw {

// The one message dialog of the program, with its four call shapes. ShowMessage has the buttons "OK" and
// "JA"; the other shapes "Okay", "Abbrechen" and "Hilfe", whatever the style. "Hilfe" opens `helpFile`, the help
// page of the program folder. Light yellow background, as the program always had.
class MessageDialog : public QDialog
{
public:
    static void showMessage(QWidget* parent, std::string_view text, MessageStyle style, std::string_view title);
    static int confirmQuestion(QWidget* parent, std::string_view text, MessageStyle style, std::string_view title,
                               const std::filesystem::path& helpFile);
    static std::optional<std::string> askText(QWidget* parent, std::string_view text, MessageStyle style,
                                              std::string_view title, std::string_view initial,
                                              const std::filesystem::path& helpFile);
    static std::optional<double> askNumber(QWidget* parent, std::string_view text, MessageStyle style,
                                           std::string_view title, std::string_view initial,
                                           const std::filesystem::path& helpFile);

    // The message shape with a window's own button captions: the first answers yes, every other no.
    static int askWithCaptions(QWidget* parent, std::string_view text, MessageStyle style, std::string_view title,
                               const QStringList& captions);

private:
    enum class Shape { Message, Question, Text, Number };
    MessageDialog(QWidget* parent, Shape shape, std::string_view text, MessageStyle style, std::string_view title,
                  std::string_view initial, const std::filesystem::path& helpFile, const QStringList& captions = {});

    int m_answer = kAnswerCancel;
    QLineEdit* m_input = nullptr;
};

} // namespace zw
