# Writes the C++ source that holds the version: cmake -DRELEASE=1.0.0 -DTREE=... -DOUTPUT=... -P version.cmake
# The commit is that of the tree at hand. An archive without git tells it in scripts/commit.txt.
file(READ ${TREE}/scripts/commit.txt commit)
string(STRIP "${commit}" commit)
if(commit MATCHES "Format")
  set(commit 0000000)
endif()
set(dirty "")
find_program(GIT git)
if(GIT)
  execute_process(COMMAND ${GIT} -C ${TREE} rev-parse --show-toplevel
    OUTPUT_VARIABLE top OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  get_filename_component(tree ${TREE} REALPATH)
  if(top STREQUAL tree)
    execute_process(COMMAND ${GIT} -C ${TREE} rev-parse --short=7 HEAD
      OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    execute_process(COMMAND ${GIT} --no-optional-locks -C ${TREE} status --porcelain --untracked-files=no
      OUTPUT_VARIABLE changes ERROR_QUIET)
    if(changes)
      set(dirty "-dirty")
    endif()
  endif()
endif()
set(text "#include \"base/version.h\"\n
namespace vorc {\n
const char* const kVersion = \"${RELEASE}+${commit}${dirty}\";\n
}  // namespace vorc\n")
set(before "")
if(EXISTS ${OUTPUT})
  file(READ ${OUTPUT} before)
endif()
if(NOT before STREQUAL text)
  file(WRITE ${OUTPUT} "${text}")
endif()
