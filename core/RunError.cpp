#include "core/RunError.h"

#include <utility>

namespace zw {

RunError::RunError(int number, std::string description)
    : std::runtime_error(std::to_string(number) + " " + description), m_number(number),
      m_description(std::move(description))
{
}

RunError RunError::invalidCall()
{
    return {5, "Ungültiger Prozeduraufruf oder ungültiges Argument"};
}
RunError RunError::overflow()
{
    return {6, "Überlauf"};
}
RunError RunError::divisionByZero()
{
    return {11, "Division durch Null"};
}
RunError RunError::typeMismatch()
{
    return {13, "Typen unverträglich"};
}
RunError RunError::fileExists()
{
    return {58, "Datei existiert bereits"};
}

RunError RunError::fileNotFound()
{
    return {53, "Datei nicht gefunden"};
}
RunError RunError::diskFull()
{
    return {61, "Datenträger voll"};
}
RunError RunError::inputPastEnd()
{
    return {62, "Eingabe nach Dateiende"};
}
RunError RunError::permissionDenied()
{
    return {70, "Zugriff verweigert"};
}
RunError RunError::pathFileAccess()
{
    return {75, "Fehler beim Zugriff auf Pfad/Datei"};
}
RunError RunError::pathNotFound()
{
    return {76, "Pfad nicht gefunden"};
}
RunError RunError::invalidPicture()
{
    return {481, "Ungültiges Bild"};
}
RunError RunError::subscriptOutOfRange()
{
    return {9, "Index außerhalb des gültigen Bereichs"};
}
RunError RunError::printerUnavailable(const std::string& printer)
{
    return {482, "Druckerfehler: Der Drucker \"" + printer + "\" ist nicht verfügbar."};
}
RunError RunError::printerFault()
{
    return {482, "Druckerfehler"};
}

} // namespace zw
