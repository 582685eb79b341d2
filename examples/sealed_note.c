// A note sealed with a password: deriving a key, encrypting, storing, opening, and checking
// that nothing but the right password and an unchanged note opens it.
//
//   vorc -morv -morvquiet sealed_note.c
//
// The exit status is the number of failed checks.

#define ROUNDS 20000

// A stored note is "salt:rounds:sealed text", all that is needed besides the password.
function seal(password, text)
{
  $salt = morv_random_hex(16);
  $key = morv_pbkdf2(password, $salt, ROUNDS);
  return isprint($salt, ":", ROUNDS, ":", morv_encrypt($key, text));
}

// The text of a stored note, empty if the password is wrong or the note was changed.
function open_note(password, note)
{
  int parts;
  parts = morv_split(note, ":");
  if (morv_list_count(parts) != 3) return "";
  $key = morv_pbkdf2(password, morv_list_get(parts, 0), morv_atoi(morv_list_get(parts, 1)));
  $text = morv_decrypt($key, morv_list_get(parts, 2));
  morv_list_free(parts);
  return $text;
}

// Changes one character of a text.
function damage(text, place)
{
  $other = "0";
  if (morv_strcmp(morv_substr(text, place, 1), "0") == 0) $other = "1";
  return isprint(morv_substr(text, 0, place), $other, morv_substr(text, place + 1, 0 - 1));
}

int main()
{
  $secret = "The key is under the third flower pot.";
  $note = seal("correct horse", $secret);

  morv_assert(morv_strlen($note) > morv_strlen($secret), "a note is longer than its text");
  morv_assert(morv_strstr($note, "flower") < 0, "the text doesn't show");
  morv_assert_eq_str(open_note("correct horse", $note), $secret, "the password opens it");
  morv_assert_eq_str(open_note("wrong horse", $note), "", "another one doesn't");
  morv_assert_eq_str(open_note("correct horse", damage($note, 3)), "", "a changed salt is noticed");
  morv_assert_eq_str(open_note("correct horse", damage($note, morv_strlen($note) - 9)), "", "a changed note is noticed");
  morv_assert_eq_str(open_note("correct horse", "no note"), "", "any other text is refused");

  // Sealing twice gives different notes, by the random salt and nonce.
  morv_assert(morv_strcmp($note, seal("correct horse", $secret)) != 0, "no two notes are alike");

  // Through a file and back.
  morv_file_write("sealed_note.tmp", $note);
  morv_assert_eq_str(open_note("correct horse", morv_file_read("sealed_note.tmp")), $secret, "it survives a file");
  morv_remove("sealed_note.tmp");

  // A signature needs no secrecy, only the key: who has it can tell that the text is genuine.
  $mine = morv_hmac_sha256("shared key", $secret);
  morv_assert_eq_int(morv_strlen($mine), 64, "length of a signature");
  morv_assert_eq_str(morv_hmac_sha256("shared key", $secret), $mine, "the signature fits");
  morv_assert(morv_strcmp(morv_hmac_sha256("shared key", $secret + "!"), $mine) != 0, "a changed text doesn't fit");

  morv_exit(morv_test_summary());
  return 0;
}
