#pragma once

#include <span>

#include "builtins/call.h"

namespace vorc {

/// A built-in's name in scripts and what runs it.
struct BuiltinBinding {
  const char* name;
  BuiltinHandler handler;
};

// One table a library, each in the file NAME_bindings.cpp.
std::span<const BuiltinBinding> BasicBuiltins();
std::span<const BuiltinBinding> CheckBuiltins();
std::span<const BuiltinBinding> CodeBuiltins();
std::span<const BuiltinBinding> ContainerBuiltins();
std::span<const BuiltinBinding> CryptoBuiltins();
std::span<const BuiltinBinding> FileBuiltins();
std::span<const BuiltinBinding> FingerprintBuiltins();
std::span<const BuiltinBinding> JsonBuiltins();
std::span<const BuiltinBinding> LanguageBuiltins();
std::span<const BuiltinBinding> NetworkBuiltins();
std::span<const BuiltinBinding> PictureBuiltins();
std::span<const BuiltinBinding> ProcessBuiltins();
std::span<const BuiltinBinding> RegexBuiltins();
std::span<const BuiltinBinding> ShellUtilBuiltins();
std::span<const BuiltinBinding> SqlBuiltins();
std::span<const BuiltinBinding> StringBuiltins();
std::span<const BuiltinBinding> SystemBuiltins();
std::span<const BuiltinBinding> TensorBuiltins();
std::span<const BuiltinBinding> ThreadBuiltins();
std::span<const BuiltinBinding> VersionBuiltins();

}  // namespace vorc
