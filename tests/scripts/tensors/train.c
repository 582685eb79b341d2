// A layer over attention learns a sentence. The loss must fall, and all must come out the same to the last bit in
// every build, on every machine.
int spread(int rows, int cols, int seed)
{
  int t;
  t = tensor_new(rows, cols);
  tensor_init_spread(t, seed);
  return t;
}

int main()
{
  int ids; int targets; int x; int y; int w; int b; int v; int gradient; int i; double loss;
  ids = tensor_tokenize("the quick brown fox jumps over the lazy dog");
  targets = tensor_tokenize("he quick brown fox jumps over the lazy dog.");
  x = tensor_add(tensor_embedding_lookup(spread(128, 24, 1), ids), tensor_positional_encoding(tensor_cols(ids), 24));
  v = spread(1, 24, 7);
  y = tensor_self_attention(x, spread(24, 24, 4), spread(1, 24, 5), spread(24, 24, 6), v, spread(24, 24, 8), v, spread(24, 24, 9), v, 3, 1);
  y = tensor_relu(tensor_layernorm(tensor_add(x, y), spread(1, 24, 2), v, 0.00001));
  w = spread(24, 128, 3); b = tensor_new(1, 128);
  for (i = 0; i < 200; i++) {
    gradient = tensor_linear(y, w, b);
    loss = tensor_cross_entropy_loss(gradient, targets);
    if (i % 50 == 0) printf("%d %.12f", i, loss);
    gradient = tensor_cross_entropy_loss_backward(gradient, targets);
    tensor_sgd_step(w, tensor_matmul(tensor_transpose(y), gradient), 8);
    tensor_sgd_step(b, tensor_layernorm_backward_beta(gradient), 8);
  }
  tensor_save(w, "w"); tensor_save(y, "y");
  printf("%.17g %s %s", loss, morv_file_hash("w"), morv_file_hash("y"));
  return 0;
}
