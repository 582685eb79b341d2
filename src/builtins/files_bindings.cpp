#include <string>

#include "builtins/bindings.h"
#include "builtins/list_handles.h"
#include "lib/file_fingerprint.h"
#include "lib/file_replace.h"
#include "lib/files.h"
#include "lib/globbing.h"
#include "lib/streams.h"

namespace vorc {

namespace {

constexpr size_t kFingerprintLimit = 1024;

std::optional<std::string> Path(const BuiltinCall& call, size_t i) {
  const auto text = call.Text(i);
  return text ? std::optional<std::string>(*text) : std::nullopt;
}

Streams& StreamsOf(const BuiltinCall& call) {
  return call.runtime().State<Streams>();
}

void MorvFileReadBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  call.ReturnText(path ? MorvFileRead(*path, BuiltinCall::kTextLimit) : std::string());
}

void MorvFileWriteBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  const auto text = call.Text(1);
  call.ReturnInt(path && text && MorvFileWrite(*path, *text));
}

void MorvFileContainsBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  const auto needle = call.Text(1);
  call.ReturnInt(path && needle ? MorvFileContains(*path, *needle) : -1);
}

void MorvFileDiffBuiltin(BuiltinCall& call) {
  const auto a = Path(call, 0);
  const auto b = Path(call, 1);
  call.ReturnInt(a && b ? MorvFileDiff(*a, *b) : -1);
}

void MorvFileLinesBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  call.ReturnInt(path ? MorvFileLines(*path) : -1);
}

void MorvFileLineBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  const auto number = call.Int(1);
  call.ReturnText(path && number ? MorvFileLine(*path, *number) : std::string());
}

void MorvFileReplaceBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  const auto from = call.Text(1);
  const auto to = call.Text(2);
  call.ReturnInt(path && from && to ? MorvFileReplace(*path, *from, *to) : -1);
}

void MorvFileExistsBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  call.ReturnInt(path && MorvFileExists(*path));
}

void MorvFileMtimeBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  call.ReturnInt(path ? MorvFileMtime(*path) : -1);
}

void MorvFileSizeBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  call.ReturnInt(path ? MorvFileSize(*path) : 0);
}

void MorvFileFingerprintBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  call.ReturnText(path ? MorvFileFingerprint(*path) : std::string(), kFingerprintLimit);
}

void MorvFingerprintSimilarityBuiltin(BuiltinCall& call) {
  call.ReturnInt(MorvFingerprintSimilarity(call.Text(0).value_or(""), call.Text(1).value_or("")));
}

void MorvMkdirBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  call.ReturnInt(path && MorvMkdir(*path));
}

void MorvRemoveBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  call.ReturnInt(path && MorvRemove(*path));
}

void MorvRenameBuiltin(BuiltinCall& call) {
  const auto from = Path(call, 0);
  const auto to = Path(call, 1);
  call.ReturnInt(from && to && MorvRename(*from, *to));
}

void MorvGlobBuiltin(BuiltinCall& call) {
  const auto pattern = Path(call, 0);
  call.ReturnInt(pattern ? NewListHandle(call, MorvGlob(*pattern)) : 0);
}

void MorvGlobRBuiltin(BuiltinCall& call) {
  const auto dir = Path(call, 0);
  const auto pattern = call.Text(1);
  call.ReturnInt(dir && pattern ? NewListHandle(call, MorvGlobR(*dir, *pattern)) : 0);
}

void MorvFopenBuiltin(BuiltinCall& call) {
  const auto path = Path(call, 0);
  call.ReturnInt(path ? StreamsOf(call).MorvFopen(*path) : 0);
}

void MorvFgetsBuiltin(BuiltinCall& call) {
  call.ReturnText(StreamsOf(call).MorvFgets(call.Int(0).value_or(0), BuiltinCall::kTextLimit));
}

void MorvFeofBuiltin(BuiltinCall& call) {
  call.ReturnInt(StreamsOf(call).MorvFeof(call.Int(0).value_or(0)));
}

void MorvFcloseBuiltin(BuiltinCall& call) {
  StreamsOf(call).MorvFclose(call.Int(0).value_or(0));
}

constexpr BuiltinBinding kBindings[] = {
    {"morv_file_read", MorvFileReadBuiltin},
    {"ifile_read", MorvFileReadBuiltin},
    {"morv_file_write", MorvFileWriteBuiltin},
    {"ifile_write", MorvFileWriteBuiltin},
    {"morv_file_contains", MorvFileContainsBuiltin},
    {"ifile_contains", MorvFileContainsBuiltin},
    {"morv_file_diff", MorvFileDiffBuiltin},
    {"ifile_diff", MorvFileDiffBuiltin},
    {"morv_file_lines", MorvFileLinesBuiltin},
    {"ifile_lines", MorvFileLinesBuiltin},
    {"morv_file_line", MorvFileLineBuiltin},
    {"ifile_line", MorvFileLineBuiltin},
    {"morv_file_replace", MorvFileReplaceBuiltin},
    {"ifile_replace", MorvFileReplaceBuiltin},
    {"morv_file_exists", MorvFileExistsBuiltin},
    {"ifile_exists", MorvFileExistsBuiltin},
    {"morv_file_mtime", MorvFileMtimeBuiltin},
    {"ifile_mtime", MorvFileMtimeBuiltin},
    {"morv_file_size", MorvFileSizeBuiltin},
    {"ifile_size", MorvFileSizeBuiltin},
    {"morv_file_fingerprint", MorvFileFingerprintBuiltin},
    {"ifile_fingerprint", MorvFileFingerprintBuiltin},
    {"morv_fingerprint_similarity", MorvFingerprintSimilarityBuiltin},
    {"morv_mkdir", MorvMkdirBuiltin},
    {"imkdir", MorvMkdirBuiltin},
    {"morv_remove", MorvRemoveBuiltin},
    {"iremove", MorvRemoveBuiltin},
    {"morv_rename", MorvRenameBuiltin},
    {"irename", MorvRenameBuiltin},
    {"morv_glob", MorvGlobBuiltin},
    {"iglob", MorvGlobBuiltin},
    {"morv_glob_r", MorvGlobRBuiltin},
    {"iglob_r", MorvGlobRBuiltin},
    {"morv_fopen", MorvFopenBuiltin},
    {"ifopen", MorvFopenBuiltin},
    {"morv_fgets", MorvFgetsBuiltin},
    {"ifgets", MorvFgetsBuiltin},
    {"morv_feof", MorvFeofBuiltin},
    {"ifeof", MorvFeofBuiltin},
    {"morv_fclose", MorvFcloseBuiltin},
    {"ifclose", MorvFcloseBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> FileBuiltins() {
  return kBindings;
}

}  // namespace vorc
