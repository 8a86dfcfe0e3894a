#include "editor/EditorDefaults.h"

#include "editor/ParameterText.h"
#include "db/Database.h"
#include "ui/Prompter.h"

namespace tavlo {

std::optional<std::string> ReadDefault(Database& db, const std::string& field) {
    Statement query = db.prepare("SELECT Value FROM DefaultsTable WHERE Field = :Field");
    query.bind(":Field", field);
    if (!query.step()) return std::nullopt;
    return query.getText("Value");
}

std::optional<int> ReadDefaultNumber(Database& db, const std::string& field) {
    const auto text = ReadDefault(db, field);
    if (!text) return std::nullopt;
    return static_cast<int>(ParameterText::LeadingNumber(*text));
}

void WriteDefault(Database& db, const std::string& field, const std::string& value) {
    Transaction transaction(db);
    db.prepare("DELETE FROM DefaultsTable WHERE Field = :Field").bind(":Field", field).run();
    db.prepare("INSERT INTO DefaultsTable (Field, Value) VALUES (:Field, :Value)")
        .bind(":Field", field)
        .bind(":Value", value)
        .run();
    transaction.commit();
}

void WriteDefault(Database& db, const std::string& field, int value) { WriteDefault(db, field, std::to_string(value)); }

void ClearDefaultsMenu(Database& db, Prompter& prompter) {
    const auto answer = prompter.message(
        "About to Clear Defaults",
        "This will clear any Defaults you've set for Preset Parameter fields.  Are you sure you want to continue?",
        MessageButtons::YesNo);
    if (answer != MessageAnswer::Yes) return;
    try {
        Transaction transaction(db);
        db.exec("DELETE FROM DefaultsTable");
        db.exec("DELETE FROM MessageStringRec WHERE MapType = 'D'");
        transaction.commit();
    } catch (const DatabaseError&) {
        prompter.message("Database Error", "There has been a Database Error");
    }
}

}  // namespace tavlo
