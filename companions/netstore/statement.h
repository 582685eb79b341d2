#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorc {

/// The name in "use NAME;", whatever the case of the first word. Nothing if the text is another.
std::optional<std::string_view> UsedDatabase(std::string_view text);

/// User and password of "login USER,PASSWORD;".
struct Login {
  std::string_view user;
  std::string_view password;
};
std::optional<Login> LoginOf(std::string_view text);

/// True if a database can have this name: up to 63 letters, digits, `_`, `-` and dots, none of them first.
bool IsDatabaseName(std::string_view name);

/// True if something stands in the text besides blanks, semicolons and comments.
bool HasStatement(std::string_view text);

/// A text of a library as a short sentence of a status: "Failed: <first line>."
std::string Failure(std::string_view text);

/// "1 row", "2 rows".
std::string CountOfRows(int64_t count);

}  // namespace vorc
