// A tokenizer for arithmetic and a machine that sells drinks: two state machines around a switch.
//
//   vorc -morv -morvquiet state_machine.c

enum Lexer { BETWEEN, IN_NAME, IN_NUMBER, IN_FRACTION };

// The kinds of characters that make a difference to the tokenizer.
enum Kind { BLANK, LETTER, DIGIT, POINT, OTHER, END };

int kind_of(int c)
{
  if (c == 0) return END;
  if (c == ' ' || c == '\t') return BLANK;
  if (c >= 'a' && c <= 'z' || c >= 'A' && c <= 'Z' || c == '_') return LETTER;
  if (c >= '0' && c <= '9') return DIGIT;
  if (c == '.') return POINT;
  return OTHER;
}

void emit(char *kind, char *source, int start, int end)
{
  printf("  %-8s %s\n", kind, morv_substr(source, start, end - start));
}

// A while loop, since break in it ends just the loop; each state decides whether the
// character belongs to the token or is looked at again.
void tokenize(char *source)
{
  int state; int i; int start; int kind; int done;
  printf("%s\n", source);
  state = BETWEEN; i = 0; start = 0; done = 0;
  while (done == 0) {
    kind = kind_of(source[i]);
    switch (state) {
      case BETWEEN:
        start = i;
        i = i + 1;
        switch (kind) {
          case LETTER: state = IN_NAME; break;
          case DIGIT: state = IN_NUMBER; break;
          case POINT: state = IN_FRACTION; break;
          case OTHER: emit("operator", source, start, i); break;
          case END: done = 1; break;
        }
        break;
      case IN_NAME:
        if (kind == LETTER || kind == DIGIT) i = i + 1;
        else { emit("name", source, start, i); state = BETWEEN; }
        break;
      case IN_NUMBER:
        if (kind == DIGIT) i = i + 1;
        else if (kind == POINT) { i = i + 1; state = IN_FRACTION; }
        else { emit("integer", source, start, i); state = BETWEEN; }
        break;
      case IN_FRACTION:
        if (kind == DIGIT) i = i + 1;
        else { emit("decimal", source, start, i); state = BETWEEN; }
        break;
    }
  }
}

#define PRICE 150
enum Machine { WAITING, PAYING, SOLD };
int credit;

// What the machine does on one event: a coin's value, or a button.
int next(int state, char *event)
{
  int coin;
  coin = morv_atoi(event);
  switch (state) {
    case WAITING:
      credit = 0;
      if (coin == 0) { printf("  put in a coin first\n"); return WAITING; }
      // A first coin is paid like any other.
    case PAYING:
      if (morv_strcmp(event, "cancel") == 0) { printf("  %d back\n", credit); return WAITING; }
      credit = credit + coin;
      if (credit < PRICE) { printf("  %d of %d\n", credit, PRICE); return PAYING; }
      printf("  thank you, press for a drink\n");
      return SOLD;
    case SOLD:
      if (coin > 0) { printf("  paid already, %d back\n", coin); return SOLD; }
      printf("  %s for you, %d back\n", event, credit - PRICE);
      return WAITING;
  }
  return WAITING;
}

int main()
{
  int events; int state; int i;
  tokenize("rate_2 = .5*(x1+42) / 3.25");
  events = morv_split("tea 50 50 cancel 100 20 50 10 tea", " ");
  state = WAITING;
  for (i = 0; i < morv_list_count(events); i++) {
    printf("%s\n", morv_list_get(events, i));
    state = next(state, morv_list_get(events, i));
  }
  return 0;
}
