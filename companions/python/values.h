#pragma once

#include "python/object.h"
// Python.h stays first.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorc {

/// UTF-8 to a text; bytes that are none survive a way in and out.
Object TextObject(std::string_view text);
/// A text as UTF-8; empty for anything else.
std::string Utf8Of(PyObject* text);

/// What a value is as text: JSON for lists and tables, "true" or "false", empty for None.
std::string TextOf(PyObject* value);
/// A value's number, if it is one or a text that reads as one.
std::optional<double> NumberOf(PyObject* value);
/// An enum VLangKind.
int32_t KindOf(PyObject* value);
/// An integer if the number has no fraction.
Object NumberObject(double value);
/// The value that a JSON text stands for. Empty, with an error set, if it is none.
Object FromJson(std::string_view text);

/// Takes the error that is set: "ZeroDivisionError: division by zero (line 3)", with the line of the text
/// of this name that was reached last.
std::string TakeError(std::string_view source_name);

}  // namespace vorc
