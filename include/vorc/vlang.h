/*
 * vlang.h - what a shared library exports to let scripts run another language.
 *
 * A library is named for its language's kind (vpython.so, vjava.so, vjson.so), or is told by the
 * environment variables VORC_VPYTHON, VORC_VJAVA and VORC_VJSON. It is loaded at its first use and never
 * unloaded. Only VLangRunSource and VLangRunFile must be there. With VLangOpen and VLangRunIn it has
 * sessions; an entry that is missing answers as if it had failed.
 *
 * All calls come from one thread, one at a time. No exception and no jump may leave an entry. Inside a
 * file sandbox (MORV_FILE_ROOT) no library is loaded.
 *
 * Texts are UTF-8 and end with a NUL. `out` has room for `size` bytes, the NUL included: fill it with as much
 * as fits, always with a NUL. The room is zeroed before a call and is 65,536 bytes for answers and values.
 */
#ifndef VORC_VLANG_H
#define VORC_VLANG_H

#include <stdint.h>

#define VLANG_ENTRY __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

/* What VLangGetKind answers for a variable; -1 stands for one that isn't there. */
enum VLangKind {
  VLANG_MISSING = -1,
  VLANG_NONE = 0, /* there, with no value: None, null */
  VLANG_BOOL = 1,
  VLANG_INT = 2,
  VLANG_REAL = 3,
  VLANG_TEXT = 4,
  VLANG_LIST = 5 /* a list or a table of names; as text it is JSON */
};

/* Runs a program text, or the program in a file, with variables of its own that are gone afterwards. `out`
 * takes what it printed; after a failure, what it printed and why it failed. 0 is success, 1 failure. */
VLANG_ENTRY int32_t VLangRunSource(const char* text, char* out, int64_t size);
VLANG_ENTRY int32_t VLangRunFile(const char* path, char* out, int64_t size);

/* Opens a session: variables that live from one run to the next, apart from those of all other sessions.
 * Any value but 0 and 1; 0 when there is no memory. Up to 128 are open at a time. */
VLANG_ENTRY int64_t VLangOpen(void);

/* Runs a text in a session, as VLangRunSource does. */
VLANG_ENTRY int32_t VLangRunIn(int64_t session, const char* text, char* out, int64_t size);

/* Ends the session and gives back what it holds. */
VLANG_ENTRY void VLangClose(int64_t session);

/* A variable as text: 1, or 0 if there is none of this name. Truth is "true" or "false", no value the empty
 * text, a list JSON. `size` can be as small as 64. */
VLANG_ENTRY int32_t VLangGetText(int64_t session, const char* name, char* out, int64_t size);

/* A variable as number: 1, or 0 if there is none of this name or it isn't a number. Truth is 1 or 0; a text
 * that reads as a number is one. */
VLANG_ENTRY int32_t VLangGetNumber(int64_t session, const char* name, double* out);

/* What a variable holds: an enum VLangKind. */
VLANG_ENTRY int32_t VLangGetKind(int64_t session, const char* name);

/* Sets a variable, whatever it held before: 1, or 0 if it can't be. A number without a fraction becomes an
 * integer where the language tells them apart. A name that ends in ":json" sets the variable in front of it
 * to the value that the JSON text stands for, which is the way in for truth, lists and no value. */
VLANG_ENTRY int32_t VLangSetText(int64_t session, const char* name, const char* text);
VLANG_ENTRY int32_t VLangSetNumber(int64_t session, const char* name, double value);

/* How many variables the script's texts have made, and the name of each, from 0, as of the last count: 1, or
 * 0 behind the last. Names are cut to 127 bytes. */
VLANG_ENTRY int32_t VLangVarCount(int64_t session);
VLANG_ENTRY int32_t VLangVarName(int64_t session, int32_t index, char* out, int64_t size);

/* From now on, ends each run of the session that takes longer than so many milliseconds, as a failure that
 * says so; the session stays usable. 0 and less lift the limit. */
VLANG_ENTRY void VLangSetLimitMs(int64_t session, int32_t milliseconds);

#ifdef __cplusplus
}
#endif

#endif /* VORC_VLANG_H */
