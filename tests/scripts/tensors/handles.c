// What scripts see of tensors: handles, arguments of a wrong type, and the answers to bad ones.
int main()
{
  int a; int b; int t; double v;
  a = tensor_new(2, 3);
  b = tensor_new(3, 2);
  printf("%d %d %d %d", a, b, tensor_rows(b), tensor_cols(b));
  printf("%d %d %d", tensor_new(0, 3), tensor_new("2", 3), tensor_new(2000000000, 2000000000));
  printf("%d %d", tensor_add(a, b), tensor_add(a, "1"));
  tensor_free(a);
  tensor_free(a);
  tensor_free("2");
  printf("%d %d %d", tensor_rows(a), tensor_cols("2"), tensor_set(a, 0, 0, 1.5));
  a = tensor_new(1, 4);
  printf("%d", a);
  v = 0.25;
  printf("%d %d %d %d", tensor_set(a, 0, 0, v), tensor_set(a, 0, 1, "1.5x"), tensor_set(a, 0, 2, 7), tensor_set(a, 0, 4, 1));
  printf("%g %g %g %g", tensor_get(a, 0, 0), tensor_get(a, 0, 1), tensor_get(a, 0, 2), tensor_get(a, 1, 0));
  printf("%d %d %d %d", tensor_argmax(a, 0), tensor_argmax(a, 1), tensor_argmax(9, 0), tensor_argmax(b, 0));
  printf("%g %g %g", tensor_cross_entropy_loss(a, 99), tensor_cosine(a, 99), tensor_get("1", 0, 0));
  printf("%d %d %d", tensor_init_spread(a, 0), tensor_init_spread(0, 1), tensor_init_spread(a, "x"));
  printf("%g %g", tensor_get(a, 0, 0), tensor_get(a, 0, 1));
  t = tensor_scale(a, 0.5);
  printf("%d %g", t, tensor_get(t, 0, 0));
  tensor_sgd_step(a, t, 2);
  printf("%g", tensor_get(a, 0, 0));
  tensor_sgd_step(a, b, 2);
  tensor_sgd_step(a, 0, 2);
  printf("%d %d", tensor_multihead_attention(a, a, a, 3, 1), tensor_multihead_attention(a, a, a, 2, "1"));
  t = tensor_multihead_attention(b, b, b, 2, 1);
  printf("%g", tensor_get(t, 0, 0));
  printf("%d %d %d [%s] [%s]", tensor_tokenize(""), tensor_tokenize(5), morv_text_embed(5, 5), tensor_detokenize(b), tensor_detokenize("1"));
  printf("[%s]", tensor_detokenize(tensor_tokenize("Grüße\t!")));
  t = morv_text_embed("x", 0);
  printf("%d x %d", tensor_rows(t), tensor_cols(t));
  printf("%d %d %d", tensor_save(a, "no/such/folder"), tensor_save(99, "t"), tensor_save(a, 5));
  printf("%d %s", tensor_save(b, "t"), morv_file_read("t"));
  printf("%d %d", tensor_load("nothing"), tensor_load("."));
  morv_file_write("short", "MORVTENSOR 2 2 1 2 3");
  printf("%d", tensor_load("short"));
  t = tensor_load("t");
  printf("%d %d %d", t, tensor_rows(t), tensor_cols(t));
  return 0;
}
