#include "ui/lists/ListPart.h"

#include <QPointer>
#include <memory>
#include <string>

#include "lists/ListTable.h"
#include "ui/frame/Quittung.h"
#include "ui/frame/ShortcutBar.h"
#include "ui/lists/ListWindow.h"
#include "ui/receipt/ReceiptFormView.h"

namespace zw {

void installListWindows(const PartContext& context)
{
    Quittung& window = context.window;
    ReceiptForm& form = context.form;
    const ProgramPaths& paths = context.paths;
    struct Key
    {
        const ListKind* kind;
        ShortcutPlace place;
        const char* name;
        const char* caption;
        ToolbarTwin twin;
    };
    const Key keys[] = {
        {&payerList(), {ShortcutPanel::Lists, 10}, "Command3", "Von-Liste aufrufen", {"bm_vonliste", "Von-Liste aufrufen", 20}},
        {&articleList(), {ShortcutPanel::Lists, 20}, "Command2", "Für-Liste aufrufen", {"bm_fuerliste", "Für-Liste aufrufen", 21}}};
    for (const auto& [kind, place, name, caption, twin] : keys) {
        // One window per list, left open beside the receipt so that several rows can be taken over.
        auto open = std::make_shared<QPointer<ListWindow>>();
        window.setWindowOpener(std::string(kind->window), [open, kind, &window, &form, &paths] {
            if (*open == nullptr) {
                *open = new ListWindow(*kind, form, window, window.faultReporter(), paths, &window);
                (*open)->setAttribute(Qt::WA_DeleteOnClose);
                (*open)->fieldWritten = [&window](FormElement field) { window.formView()->runChangeEvent(field); };
            }
            (*open)->show();
            (*open)->raise();
            (*open)->activateWindow();
        });
        window.shortcutBar().addKey(place, name, caption,
                                    [&window, opened = std::string(kind->window)] { window.openWindow(opened); }, twin);
    }
}

} // namespace zw
