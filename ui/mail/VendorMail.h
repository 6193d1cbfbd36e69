#pragma once

#include <functional>
#include <string>

class QWidget;

namespace zw {

class ProgramPaths;
class frmLog;
class sevSMTP;

// What the error window's sender, the support wizard and the newsletter share: the send and the closing question.

// After every vendor mail, sent or not: the closing words and, on "Ja", the transcript.
void offerTranscript(QWidget* over, const std::string& firstLine, const char* title, frmLog& log);

// Connect, Send, Disconnect with the mail window's two failure boxes; false when no connection came about.
bool vendorSend(sevSMTP& smtp, QWidget* over);

// The error window's "Fehlermeldung jetzt senden": the report as HTML alone to the vendor's support address.
bool sendErrorReport(const std::string& report, const std::string& replyAddress, const ProgramPaths& paths,
                     frmLog& log, const std::function<void()>& sessionEnded);

} // namespace zw
