#pragma once

namespace zw {

class ProgramPaths;
class Quittung;
class ReceiptForm;
class SettingsStore;

// What a part of the main window is handed when it joins: the window with what it offers a part (commands and
// window openers, shortcut keys, a tab beside the receipt, field hooks, the one capture, the fault route, file
// dialogs of its own), the receipt, the settings and the program folder. Parts never look each other up.
struct PartContext
{
    Quittung& window;
    ReceiptForm& form;
    SettingsStore& settings;
    const ProgramPaths& paths;
};

} // namespace zw
