// args: 24
// Teaches a small model to write like a text, character by character, then lets it write.
// The argument is the number of hidden features.
//
// The model looks at three characters and guesses the next one: each of the three has an embedding
// table of its own; the sum of their rows goes through a layer with a bend and a layer that scores
// every character. There is no automatic differentiation: each step walks back through the layers
// by hand, last one first.

int table1; int table2; int table3;      // embeddings of the last character, the one before, and so on
int gamma; int beta;                     // layer norm
int w1; int b1; int w2; int b2;

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

// The sum of the three embeddings for each position.
int context(int last, int before, int third)
{
  int a; int b; int c; int ab; int sum;
  a = tensor_embedding_lookup(table1, last);
  b = tensor_embedding_lookup(table2, before);
  c = tensor_embedding_lookup(table3, third);
  ab = tensor_add(a, b);
  sum = tensor_add(ab, c);
  tensor_free(a); tensor_free(b); tensor_free(c); tensor_free(ab);
  return sum;
}

// a' b: the gradient of a weight from its input and its output's gradient.
int product_with_transposed(int a, int b)
{
  int t; int result;
  t = tensor_transpose(a);
  result = tensor_matmul(t, b);
  tensor_free(t);
  return result;
}

// b a': the gradient of an input from its output's gradient and the weight.
int back_through(int b, int a)
{
  int t; int result;
  t = tensor_transpose(a);
  result = tensor_matmul(b, t);
  tensor_free(t);
  return result;
}

double train(int last, int before, int third, int next)
{
  int x; int n; int h; int a; int y; int dy; int da; int dh; int dn; int dx; double loss;
  x = context(last, before, third);
  n = tensor_layernorm(x, gamma, beta, 0.00001);
  h = tensor_linear(n, w1, b1);
  a = tensor_relu(h);
  y = tensor_linear(a, w2, b2);
  loss = tensor_cross_entropy_loss(y, next);

  dy = tensor_cross_entropy_loss_backward(y, next);
  da = back_through(dy, w2);
  dh = tensor_relu_backward(h, da);
  dn = back_through(dh, w1);
  dx = tensor_layernorm_backward_x(x, gamma, dn, 0.00001);

  learn(w2, product_with_transposed(a, dy));
  learn(b2, tensor_layernorm_backward_beta(dy));
  learn(w1, product_with_transposed(n, dh));
  learn(b1, tensor_layernorm_backward_beta(dh));
  learn(gamma, tensor_layernorm_backward_gamma(x, dn, 0.00001));
  learn(beta, tensor_layernorm_backward_beta(dn));
  learn(table1, tensor_embedding_lookup_backward(table1, last, dx));
  learn(table2, tensor_embedding_lookup_backward(table2, before, dx));
  learn(table3, tensor_embedding_lookup_backward(table3, third, dx));

  tensor_free(x); tensor_free(n); tensor_free(h); tensor_free(a); tensor_free(y);
  tensor_free(dy); tensor_free(da); tensor_free(dh); tensor_free(dn); tensor_free(dx);
  return loss;
}

// The character that the model holds for the likeliest after three others.
int guess(int last, int before, int third)
{
  int x; int n; int h; int a; int y; int best;
  x = context(last, before, third);
  n = tensor_layernorm(x, gamma, beta, 0.00001);
  h = tensor_linear(n, w1, b1);
  a = tensor_relu(h);
  y = tensor_linear(a, w2, b2);
  best = tensor_argmax(y, 0);
  tensor_free(x); tensor_free(n); tensor_free(h); tensor_free(a); tensor_free(y);
  return best;
}

// A copy of a row of tokens, `shift` places later, with blanks in front.
int delayed(int tokens, int count, int shift)
{
  int t; int i;
  t = tensor_new(1, count);
  for (i = 0; i < count; i++) {
    if (i < shift) tensor_set(t, 0, i, 32);
    else tensor_set(t, 0, i, tensor_get(tokens, 0, i - shift));
  }
  return t;
}

// Lets the model write on from "A q", each character from the three before it.
void write(int step, double loss)
{
  int written; int last; int before; int third; int i; int c;
  written = tensor_new(1, 70);
  last = tensor_tokenize("q"); before = tensor_tokenize(" "); third = tensor_tokenize("A");
  for (i = 0; i < 70; i++) {
    c = guess(last, before, third);
    tensor_set(written, 0, i, c);
    tensor_set(third, 0, 0, tensor_get(before, 0, 0));
    tensor_set(before, 0, 0, tensor_get(last, 0, 0));
    tensor_set(last, 0, 0, c);
  }
  printf("step %3d, loss %.4f: A q%s", step, loss, tensor_detokenize(written));
  tensor_free(written); tensor_free(last); tensor_free(before); tensor_free(third);
}

int main()
{
  int tokens; int last; int before; int third; int next; int count; int hidden; int i; double loss;
  tokens = tensor_tokenize("A quick brown fox jumps over the lazy dog. A quick ");
  count = tensor_cols(tokens) - 1;
  last = delayed(tokens, count, 0);
  before = delayed(tokens, count, 1);
  third = delayed(tokens, count, 2);
  next = tensor_new(1, count);
  for (i = 0; i < count; i++) tensor_set(next, 0, i, tensor_get(tokens, 0, i + 1));

  hidden = morv_atoi(morv_getparam("1"));
  table1 = weights(128, 16, 1); table2 = weights(128, 16, 2); table3 = weights(128, 16, 3);
  gamma = tensor_new(1, 16); beta = tensor_new(1, 16);
  for (i = 0; i < 16; i++) tensor_set(gamma, 0, i, 1);
  w1 = weights(16, hidden, 4); b1 = tensor_new(1, hidden);
  w2 = weights(hidden, 128, 5); b2 = tensor_new(1, 128);

  for (i = 1; i <= 320; i++) {
    loss = train(last, before, third, next);
    if (i == 10 || i == 20 || i == 40 || i == 320) write(i, loss);
  }
  return 0;
}
