// One question to a chat model, and its answer.
//
//   python3 service.py 8765 &
//   vorc -morv -morvquiet ask_model.c http://localhost:8765
//
// With another service's address in its place, take the key from the environment: morv_getenv("KEY").

int main()
{
  $question = "What is the \"tide\" at noon?";
  $answer = morv_openai_chat(morv_getparam("1"), "", "a small model", $question);
  if (morv_https_status() != 200) morv_exit(1);
  printf("Q: %s\nA: %s\n", $question, $answer);
  return 0;
}
