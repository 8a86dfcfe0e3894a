#pragma once
#include <optional>
#include <string>

namespace tavlo {

class Database;

// The rows of DefaultsTable that a click on a parameter's label writes and
// that choosing a function reads back. A missing row is no default.
std::optional<std::string> ReadDefault(Database& db, const std::string& field);
std::optional<int> ReadDefaultNumber(Database& db, const std::string& field);
// Replaces the row of `field`.
void WriteDefault(Database& db, const std::string& field, const std::string& value);
void WriteDefault(Database& db, const std::string& field, int value);

class Prompter;
// ClearDefaultsMenu: after the user's yes, every default goes, the setup
// string's substrings with them, in one transaction.
void ClearDefaultsMenu(Database& db, Prompter& prompter);

}  // namespace tavlo
