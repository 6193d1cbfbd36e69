#include "core/FormHost.h"

namespace zw {

NoticeText noticeText(Notice notice)
{
    switch (notice) {
    case Notice::neue_quittung:
        return {"Neues Dokument wird angelegt", "Neues Formular wird vorbereitet. Bitte warten...", 1500};
    case Notice::optionen1:
        return {"Übernahme der Einstellungen", "Die Einstellungen werden gespeichert. Bitte warten...", 1000};
    case Notice::aussteller1:
        return {"Ausstellerdaten", "Die Ausstellerdaten werden gesichert. Bitte warten...", 2000};
    case Notice::kopieren1:
        return {"Quittung -> Zwischenablage", "Die Quittung wird als Grafik in die Zwischenablage kopiert...", 1000};
    case Notice::export1:
        return {"Export der Quittung", "Die Quittung wird exportiert. Bitte warten...", 1000};
    case Notice::export2:
        return {"Exportvorbereitung", "Die Quittung wird für den JPG-Export vorbereitet. Bitte warten...", 1000};
    }
    return {"", "", 0};
}

} // namespace zw
