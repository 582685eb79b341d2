int spread(int rows, int cols, int seed)
{
  int t;
  t = tensor_new(rows, cols);
  tensor_init_spread(t, seed);
  return t;
}

int main()
{
  int ids; int x; int w; int b; int y; int one;
  ids = tensor_tokenize("é\tb");
  tensor_tokenize("");
  tensor_embedding_lookup(spread(256, 9, 1), tensor_new(1, 1));
  y = tensor_positional_encoding(9, 2);
  one = spread(2, 2, 5);
  tensor_add(one, one);
  w = spread(3, 3, 2);
  b = spread(1, 3, 3);
  tensor_self_attention(b, w, b, w, b, w, b, w, b, 3, 0);
  y = tensor_multihead_attention(one, one, one, 1, 1);
  b = spread(1, 8, 3);
  y = tensor_layernorm(b, b, b, 0.001);
  tensor_relu(one);
  tensor_softmax(tensor_causal_mask(tensor_matmul(one, one)));
  tensor_sub(w, w); tensor_scale(w, 2); tensor_transpose(w);
  tensor_cross_entropy_loss(spread(9, 2, 7), tensor_new(1, 9));
  tensor_cross_entropy_loss(w, w);
  tensor_cross_entropy_loss_backward(one, tensor_new(1, 2));
  tensor_sgd_step(w, w, 0.25);
  printf("[%s]", tensor_detokenize(ids));
  return 0;
}
// args: -morv -morvquiet -llmtrace
