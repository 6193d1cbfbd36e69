#pragma once

#include <functional>
#include <map>
#include <string>

#include "core/ReceiptTypes.h"

class QAction;
class QMenu;
class QMenuBar;

namespace zw {

class ReceiptForm;

// The window's menus as the command catalogue lists them, by name. Every entry starts disabled; the receipt type
// entries run `chooseType`, and a checkable entry keeps the mark the form model holds for it.
struct BuiltMenus
{
    std::map<std::string, QAction*> actions;
    std::map<std::string, QMenu*> menus;
};
BuiltMenus buildMenus(QMenuBar& bar, const ReceiptForm& form,
                      const std::function<void(ReceiptTypeMenu which, int index)>& chooseType);

} // namespace zw
