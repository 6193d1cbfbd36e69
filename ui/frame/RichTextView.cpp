#include "ui/frame/RichTextView.h"

#include "ui/frame/RtfBridge.h"

namespace zw {

void showRichText(const rtf::Document& document, QTextDocument& target) { toTextDocument(document, target); }

} // namespace zw
