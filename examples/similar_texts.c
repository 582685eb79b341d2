// Finds the nearest of some known questions for whatever a user types, by the cosine between
// embeddings. The embedding counts pairs of neighbouring characters, so case, white space and
// spelling mistakes matter little; what the words mean isn't known to it.

char *known[6] = {
  "How do I reset my password?",
  "How can I change my delivery address?",
  "Where is my parcel?",
  "Which ways of payment do you accept?",
  "How do I close my account?",
  "Can I get an invoice for my order?"
};
int embeddings[6];

void answer(char *question)
{
  int e; int i; int best; double closeness; double highest;
  e = morv_text_embed(question, 512);
  best = 0;
  highest = -1.0;
  for (i = 0; i < 6; i++) {
    closeness = tensor_cosine(e, embeddings[i]);
    if (closeness > highest) {
      highest = closeness;
      best = i;
    }
  }
  tensor_free(e);
  if (highest < 0.4) printf("%-40s -> nothing like it (%.3f)", question, highest);
  else printf("%-40s -> %s (%.3f)", question, known[best], highest);
}

int main()
{
  int i; int a; int b;
  for (i = 0; i < 6; i++) embeddings[i] = morv_text_embed(known[i], 512);
  answer("reset PASSWORD");
  answer("forgot my pasword, how to reset it");
  answer("wheres   my   parcel");
  answer("adress change for delivery");
  answer("can i pay by card? which payments?");
  answer("please close my acount");
  answer("invoice");
  answer("zzz");

  // White space and case leave no trace at all.
  a = morv_text_embed("Hello  World", 64);
  b = morv_text_embed(" hello\tworld", 64);
  printf("%.6f", tensor_cosine(a, b));
  return 0;
}
