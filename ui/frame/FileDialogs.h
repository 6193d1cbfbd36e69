#pragma once

#include "app/CommonDialog.h"

class QWidget;

namespace zw {

// The toolkit's file dialog behind a CommonDialog: title, filter (each pattern also in lower case, since file
// names here are case-sensitive), the kept name as the preset, and the overwrite question only when asked for.
CommonDialog::Presenter fileDialogPresenter(QWidget* parent);

} // namespace zw
