#include "tools/Commands.h"

#include <array>

namespace zw::cli {

std::span<const CliCommand> commands()
{
    static const std::array kCommands = {
        CliCommand{"backup", "backup ORDNER              Datensicherung des Datenordners nach ORDNER/backup_zw6.zip",
                   &runBackup},
        CliCommand{"export",
                   "export pdf|xml|rtf|bmp|png|jpg QUITTUNG.ZW5 ZIELDATEI [--quality 0..100]  Quittung exportieren",
                   &runExport},
        CliCommand{"info", "info                       Programmordner, Einstellungen und Version", &runInfo},
        CliCommand{"words", "words --rounding|--truncation BETRAG  Gesamtbetrag in Worten", &runWords},
        CliCommand{"gross", "gross BETRAG --rate SATZ [--rounded-words]  Brutto eingeben: Netto, MwSt., Brutto, Worte",
                   &runGross},
        CliCommand{"ledger",
                   "ledger totals BELEGE.DAT   Summen der Belegliste und Kassenstand\n"
                   "  zettelwerk-cli ledger file QUITTUNG.ZW5   Quittung in die Belegliste des "
                   "Programmordners aufnehmen\n"
                   "  zettelwerk-cli ledger datev --from TT.MM.JJJJ --to TT.MM.JJJJ AUSGABE.csv   DATEV-Buchungsstapel "
                   "für den Steuerberater\n"
                   "  zettelwerk-cli ledger storno NUMMER   Beleg stornieren (Gegenbuchung)\n"
                   "  zettelwerk-cli ledger close [TT.MM.JJJJ] --counted BETRAG [--note TEXT]   Tagesabschluss\n"
                   "  zettelwerk-cli ledger report --day TT.MM.JJJJ AUSGABE.pdf   Kassenbericht eines "
                   "abgeschlossenen Tages\n"
                   "  zettelwerk-cli ledger chart --year JJJJ [--size BREITExHÖHE] AUSGABE.png   Auswertung "
                   "eines Jahres als Bild\n"
                   "  zettelwerk-cli ledger gdpdu --from TT.MM.JJJJ --to TT.MM.JJJJ ORDNER   Daten für die "
                   "Betriebsprüfung (GDPdU/GoBD) nach ORDNER",
                   &runLedgerWithBooks},
        CliCommand{"journal",
                   "journal verify | show [--from TT.MM.JJJJ] [--to TT.MM.JJJJ]  Änderungsprotokoll der "
                   "Belegliste prüfen oder zeigen",
                   &runJournal},
        CliCommand{"lists",
                   "lists report von_liste|artikel_fuer [--rows N] [--title TEXT] BERICHT.htm  HTML-Bericht einer Liste",
                   &runLists},
        CliCommand{"mail",
                   "mail QUITTUNG.ZW5 --to ADRESSE [--cc ADRESSE] [--subject TEXT] [--message TEXT] [--zip] "
                   "[--verbose]  Quittung per E-Mail senden",
                   &runMail},
        CliCommand{"net", "net BETRAG --rate SATZ     Netto eingeben: Netto, MwSt., Brutto, Worte", &runNet},
        CliCommand{"restore", "restore ORDNER             ORDNER/backup_zw6.zip in den Programmordner rücksichern",
                   &runRestore},
        CliCommand{"update",
                   "update check | fetch ORDNER Auf dem Server nach einer neuen Version suchen; fetch lädt ihr "
                   "Installationsprogramm nach ORDNER",
                   &runUpdate},
    };
    return kCommands;
}

} // namespace zw::cli
