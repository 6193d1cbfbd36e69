#include "core/Hints.h"

namespace zw {

std::string_view hintText(FormElement element)
{
    switch (element) {
    case FormElement::Text1:
        return "Geben Sie hier Ihre Belegnummer ein. Die Nummern sind immer fortlaufend.";
    case FormElement::Text2:
        return "Wenn Sie hier die Währung ändern möchten, dann klicken Sie mit der linken Maustaste in "
               "dieses "
               "Feld.";
    case FormElement::Text3:
        return "Geben Sie hier den MwSt. Prozentsatz ein. Deutschland = 19%. Sollten Sie z. B. 7% als "
               "Standardwert in der Quittung verwenden, dann klicken Sie bitte das + Zeichen an und Sie "
               "gelangen zu den Programmeinstellungen. Legen Sie dort Ihren MwSt.-Wert fest.";
    case FormElement::Text4:
        return "Geben Sie hier den Gesamtbetrag in Worten ein bzw. drücken Sie die RETURN-Taste beim "
               "Eingeben "
               "des Brutto- oder Nettowertes und das Feld wird automatisch ausgefüllt.";
    case FormElement::Text5:
    case FormElement::Text6:
        return "Geben Sie hier den Empfänger des Belegs ein bzw. die Firma oder Person von welcher Sie das "
               "Geld erhalten. Wenn Sie nach Ihrer Eingabe die Enter-Taste drücken, wird die Eingabe zur "
               "Autovervollständigung hinzugefügt.";
    case FormElement::Text7:
        return "Geben Sie hier ein wofür das Geld gezahlt wurde ( Verwendungszweck ). Wenn Sie nach Ihrer "
               "Eingabe die Enter-Taste drücken, wird die Eingabe zur Autovervollständigung hinzugefügt.";
    case FormElement::Text8:
        return "Geben Sie hier den Ausstellungsort ein. Wenn Sie nach Ihrer Eingabe die Enter-Taste drücken, "
               "wird die Eingabe zur Autovervollständigung hinzugefügt.";
    case FormElement::Text9:
        return "Geben Sie hier das Datum ein, an dem der Beleg ausgestellt wird.                            "
               "TIPP: Geben Sie die Ziffer 0 ein gefolgt von Return, dann erscheint das heutige Datum. Mit "
               "Taste F10 wird ein Kalender angezeigt.";
    case FormElement::Text10:
        return "Geben Sie hier den Nettowert (Betrag ohne MwSt.) ein. Drücken Sie dann auf RETURN und die "
               "zwei "
               "weiteren Felder MwSt.-Satz und Gesamtbetrag werden vom Programm berechnet.";
    case FormElement::Text11:
        return "Hier können Sie keine Eingabe vornehmen!";
    case FormElement::Text12:
        return "Geben Sie hier den Bruttowert (Betrag mit MwSt.) ein. Drücken Sie dann auf RETURN und die "
               "zwei "
               "oberen Felder MwSt.-Satz und Nettowert werden vom Programm berechnet.";
    case FormElement::Text14:
        return "Geben Sie hier Ihren Buchungsvermerk ein. Z. B. Barkasse. Bitte kein RETURN-Tastendruck "
               "verwenden.";
    case FormElement::RTFBox:
        return "Hier stehen die Daten des Ausstellers. Wenn Sie diese Daten ändern möchten, dann drücken Sie "
               "bitte die Taste F9.";
    case FormElement::Label1:
        return "Klicken Sie hier mit der linken Maustaste um das Menü mit den div. Belegarten zu öffnen.";
    default:
        return {};
    }
}

std::string hintGreeting()
{
    // The run of blanks belongs to the greeting's text.
    return "Herzlich willkommen!" + std::string(97, ' ') +
           "Mit dem Zettelwerk können Sie bequem Quittungen ausstellen und drucken.";
}

std::string hintShown(std::string_view hint)
{
    // Three blanks or more never stand between words of one sentence.
    constexpr std::size_t kPadding = 3;
    std::string shown;
    std::size_t blanks = 0;
    for (char c : hint) {
        if (c == ' ') {
            ++blanks;
            continue;
        }
        if (blanks > 0)
            shown += blanks >= kPadding && !shown.empty() ? std::string("\n") : std::string(blanks, ' ');
        blanks = 0;
        shown += c;
    }
    return shown;
}

} // namespace zw
