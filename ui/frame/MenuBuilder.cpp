#include "ui/frame/MenuBuilder.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <string_view>
#include <vector>

#include "app/CommandCatalogue.h"
#include "core/ReceiptForm.h"
#include "ui/frame/QtText.h"

namespace zw {
namespace {

using ChooseType = std::function<void(ReceiptTypeMenu which, int index)>;

// The names whose menu entries carry a check mark.
bool isCheckable(std::string_view name)
{
    static constexpr std::string_view kCheckable[] = {
        "einna",       "ausga",        "steueran",      "steueraus",         "eur",          "waehrungfestlegen",
        "spr_deutsch", "spr_englisch", "schriftarial",  "schrift",           "xpdesign",     "office2003er",
        "office2007er", "vbstudio05",  "flat_button",   "office_button",     "office2003_button",
        "xp_button",   "vista_button", "ausstellerein", "einfst",
        "austeller_ent", "entfst"};
    return std::find(std::begin(kCheckable), std::end(kCheckable), name) != std::end(kCheckable);
}

// The caption's markup read as formatting: the square becomes an icon, bold/italic/underline the font.
void formatAction(QAction* action, std::string_view caption)
{
    CaptionFormat format = parseCaption(caption);
    action->setText(qt(format.text));
    QFont font = action->font();
    font.setBold(format.bold);
    font.setItalic(format.italic);
    font.setUnderline(format.underline);
    action->setFont(font);
    if (!format.squareColour.empty()) {
        QPixmap square(12, 12);
        square.fill(QColor(qt("#" + format.squareColour)));
        QPainter painter(&square);
        painter.setPen(Qt::black);
        painter.drawRect(0, 0, 11, 11);
        action->setIcon(QIcon(square));
    }
}

void buildReceiptTypeMenu(QMenu* bel, std::map<std::string, QAction*>& actions, const ChooseType& chooseType)
{
    auto addTypes = [&](QMenu* menu, ReceiptTypeMenu which, const char* prefix) {
        auto types = receiptTypes(which);
        for (std::size_t index = 0; index < types.size(); ++index) {
            QAction* action = menu->addAction(qt(types[index].menuCaption));
            action->setObjectName(QString("%1_%2").arg(prefix).arg(index));
            QObject::connect(action, &QAction::triggered, action,
                             [chooseType, which, index] { chooseType(which, static_cast<int>(index)); });
            actions[action->objectName().toStdString()] = action;
        }
    };
    QMenu* health = bel->addMenu("Gesundheitswesen");
    health->setObjectName("gesundhei");
    addTypes(health, ReceiptTypeMenu::beleg2, "beleg2");
    QMenu* school = bel->addMenu("Schulwesen");
    school->setObjectName("schulwe");
    addTypes(school, ReceiptTypeMenu::beleg3, "beleg3");
    addTypes(bel, ReceiptTypeMenu::beleg1, "beleg1");
    bel->addSeparator();
    QAction* own = bel->addAction("Eigene Belegart...");
    own->setObjectName("beleg1_9");
    QObject::connect(own, &QAction::triggered, own, [chooseType] { chooseType(ReceiptTypeMenu::beleg1, kOwnTypeIndex); });
    actions["beleg1_9"] = own;
}

} // namespace

BuiltMenus buildMenus(QMenuBar& bar, const ReceiptForm& form, const ChooseType& chooseType)
{
    BuiltMenus built;
    auto tree = menuTree();
    std::vector<QMenu*> open(3, nullptr);
    for (std::size_t i = 0; i < tree.size(); ++i) {
        const MenuEntry& entry = tree[i];
        const bool hasChildren = i + 1 < tree.size() && tree[i + 1].depth == entry.depth + 1;
        const std::string name(entry.name);
        if (entry.depth == 0) {
            open[0] = bar.addMenu(qt(parseCaption(entry.caption).text));
            open[0]->setObjectName(qt(entry.name));
            built.menus[name] = open[0];
            continue;
        }
        QMenu* parent = open[static_cast<std::size_t>(entry.depth - 1)];
        if (entry.caption == "-") {
            parent->addSeparator();
            continue;
        }
        if (hasChildren || name == "bel") {
            QMenu* sub = parent->addMenu(qt(parseCaption(entry.caption).text));
            sub->setObjectName(qt(entry.name));
            formatAction(sub->menuAction(), entry.caption);
            open[static_cast<std::size_t>(entry.depth)] = sub;
            built.menus[name] = sub;
            if (name == "bel")
                buildReceiptTypeMenu(sub, built.actions, chooseType);
            continue;
        }
        QAction* action = parent->addAction(QString());
        action->setObjectName(qt(entry.name));
        formatAction(action, entry.caption);
        if (!entry.shortcut.empty()) {
            action->setShortcut(QKeySequence(qt(entry.shortcut)));
            action->setShortcutContext(Qt::ApplicationShortcut);
        }
        action->setCheckable(isCheckable(entry.name));
        action->setEnabled(false);
        QObject::connect(action, &QAction::triggered, action, [&form, action] {
            // The menu keeps its own marks in the model; undo Qt's automatic toggle.
            if (action->isCheckable())
                action->setChecked(form.isChecked(action->objectName().toStdString()));
        });
        built.actions[name] = action;
    }
    return built;
}

} // namespace zw
