int square(int rows, int cols, int seed)
{
  int t;
  t = tensor_new(rows, cols);
  tensor_init_spread(t, seed);
  return t;
}

int main()
{
  int ids; int emb; int x; int w; int b; int y; int one; double loss;
  ids = tensor_tokenize("Café\tau lait, and then a text of more than sixty bytes, cut twice!");
  emb = square(256, 12, 1);
  x = tensor_embedding_lookup(emb, tensor_tokenize("ab"));
  tensor_tokenize("");
  tensor_positional_encoding(tensor_cols(ids), 12);
  x = tensor_add(x, x);
  w = square(2, 3, 2); x = w;
  w = square(3, 3, 2);
  b = square(1, 3, 3);
  y = tensor_self_attention(x, w, b, w, b, w, b, w, b, 3, 1);
  one = square(2, 2, 5);
  tensor_multihead_attention(one, one, one, 1, 0);
  y = tensor_relu(tensor_layernorm(y, b, b, 0.001));
  tensor_softmax(tensor_causal_mask(tensor_matmul(w, w)));
  tensor_sub(w, w); tensor_scale(w, 2); tensor_transpose(w);
  loss = tensor_cross_entropy_loss(w, b) + tensor_cross_entropy_loss(w, w);
  y = tensor_cross_entropy_loss_backward(w, tensor_new(1, 3));
  tensor_sgd_step(w, y, 0.5);
  tensor_sgd_step(one, one, 0.25);
  printf("[%s]", tensor_detokenize(tensor_tokenize("a\nb")));
  return 0;
}
// args: -morv -morvquiet -llmtrace
