#include "ui/RichTextView.h"

#include "ui/RtfBridge.h"

namespace zw {

void showRichText(const rtf::Document& document, QTextDocument& target) { toTextDocument(document, target); }

} // namespace zw
