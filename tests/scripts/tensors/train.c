// A model of two layers learns a sentence. The loss must fall, and the weights must come out the
// same to the last bit in every build, on every machine.
int emb; int w1; int b1; int w2; int b2;

int weights(int rows, int cols, int seed)
{
  int t;
  t = tensor_new(rows, cols);
  tensor_init_spread(t, seed);
  return t;
}

void learn(int w, int gradient)
{
  tensor_sgd_step(w, gradient, 0.5);
  tensor_free(gradient);
}

double step(int ids, int targets, int where)
{
  int e; int x; int h; int a; int logits; int dlogits; int t; int da; int dh; int dx; double loss;
  e = tensor_embedding_lookup(emb, ids);
  x = tensor_add(e, where);
  h = tensor_linear(x, w1, b1);
  a = tensor_relu(h);
  logits = tensor_linear(a, w2, b2);
  loss = tensor_cross_entropy_loss(logits, targets);

  dlogits = tensor_cross_entropy_loss_backward(logits, targets);
  t = tensor_transpose(w2); da = tensor_matmul(dlogits, t); tensor_free(t);
  dh = tensor_relu_backward(h, da);
  t = tensor_transpose(w1); dx = tensor_matmul(dh, t); tensor_free(t);

  t = tensor_transpose(a); learn(w2, tensor_matmul(t, dlogits)); tensor_free(t);
  learn(b2, tensor_layernorm_backward_beta(dlogits));
  t = tensor_transpose(x); learn(w1, tensor_matmul(t, dh)); tensor_free(t);
  learn(b1, tensor_layernorm_backward_beta(dh));
  learn(emb, tensor_embedding_lookup_backward(emb, ids, dx));

  tensor_free(e); tensor_free(x); tensor_free(h); tensor_free(a); tensor_free(logits);
  tensor_free(dlogits); tensor_free(da); tensor_free(dh); tensor_free(dx);
  return loss;
}

int main()
{
  int ids; int targets; int where; int i; double loss;
  ids = tensor_tokenize("the quick brown fox jumps over the lazy dog");
  targets = tensor_tokenize("he quick brown fox jumps over the lazy dog.");
  emb = weights(128, 24, 1); w1 = weights(24, 32, 2); b1 = tensor_new(1, 32);
  w2 = weights(32, 128, 3); b2 = tensor_new(1, 128);
  where = tensor_positional_encoding(tensor_cols(ids), 24);
  for (i = 0; i < 300; i++) {
    loss = step(ids, targets, where);
    if (i % 100 == 0) printf("%d %.12f", i, loss);
  }
  printf("%.17g, below 0.1: %d", loss, loss < 0.1);
  // Had a step left a tensor behind, this number would be larger.
  printf("next handle %d", tensor_new(1, 1));
  tensor_save(emb, "emb"); printf("%s", morv_file_hash("emb"));
  tensor_save(w1, "w1"); printf("%s", morv_file_hash("w1"));
  tensor_save(w2, "w2"); printf("%s", morv_file_hash("w2"));
  // The rest of a transformer, run over what was learned.
  b1 = weights(1, 24, 7);
  i = tensor_self_attention(tensor_add(tensor_embedding_lookup(emb, ids), where), weights(24, 24, 4), weights(1, 24, 5),
                            weights(24, 24, 6), b1, weights(24, 24, 8), b1, weights(24, 24, 9), b1, 3, 1);
  tensor_save(tensor_layernorm(i, b1, b1, 0.00001), "y"); printf("%d %s", tensor_rows(i), morv_file_hash("y"));
  return 0;
}
