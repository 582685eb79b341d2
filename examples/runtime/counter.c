/* A runtime for scripts: a language of counters. "add NAME NUMBER" adds to one, "show NAME" prints it. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <vorc/vlang.h>

enum { kCounters = 16, kNameSize = 32 };

struct Session {
  int count;
  char names[kCounters][kNameSize];
  long values[kCounters];
};

static long* find(struct Session* session, const char* name, int make) {
  for (int i = 0; i < session->count; ++i) {
    if (strcmp(session->names[i], name) == 0) return &session->values[i];
  }
  if (!make || session->count == kCounters) return NULL;
  snprintf(session->names[session->count], kNameSize, "%s", name);
  session->values[session->count] = 0;
  return &session->values[session->count++];
}

/* Appends to an answer as much as fits. */
static void print(char* out, int64_t size, const char* text) {
  const size_t used = strlen(out);
  snprintf(out + used, (size_t)size - used, "%s\n", text);
}

static int32_t run(struct Session* session, const char* text, char* out, int64_t size) {
  char name[kNameSize], line[64];
  for (; text != NULL && *text != '\0'; text = strchr(text, '\n'), text += text != NULL) {
    long number = 0;
    const int adds = sscanf(text, "add %31s %ld", name, &number) == 2;
    const int shows = !adds && sscanf(text, "show %31s", name) == 1;
    long* value = adds || shows ? find(session, name, adds) : NULL;
    if (value == NULL) {
      print(out, size, adds || shows ? "no such counter" : "expected add or show");
      return 1;
    }
    *value += number;
    snprintf(line, sizeof line, "%ld", *value);
    if (shows) print(out, size, line);
  }
  return 0;
}

int32_t VLangRunSource(const char* text, char* out, int64_t size) {
  struct Session session = {0};
  return run(&session, text, out, size);
}

int32_t VLangRunFile(const char* path, char* out, int64_t size) {
  char text[4096] = "";
  FILE* file = fopen(path, "r");
  if (file == NULL) {
    print(out, size, "can't read the file");
    return 1;
  }
  text[fread(text, 1, sizeof text - 1, file)] = '\0';
  fclose(file);
  return VLangRunSource(text, out, size);
}

int64_t VLangOpen(void) {
  return (int64_t)(intptr_t)calloc(1, sizeof(struct Session));
}

int32_t VLangRunIn(int64_t session, const char* text, char* out, int64_t size) {
  return run((struct Session*)(intptr_t)session, text, out, size);
}

int32_t VLangGetText(int64_t session, const char* name, char* out, int64_t size) {
  const long* value = find((struct Session*)(intptr_t)session, name, 0);
  if (value == NULL) return 0;
  snprintf(out, (size_t)size, "%ld", *value);
  return 1;
}

int32_t VLangGetKind(int64_t session, const char* name) {
  return find((struct Session*)(intptr_t)session, name, 0) != NULL ? VLANG_INT : VLANG_MISSING;
}

void VLangClose(int64_t session) {
  free((struct Session*)(intptr_t)session);
}
