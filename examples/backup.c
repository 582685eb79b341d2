// Copies a folder's files with several threads and proves the copies by their hashes.
//
//   vorc -morv -morvquiet backup.c
//
// Works in a folder of its own making and removes it at the end. A script thread runs one
// command line, not script code, so the copies run side by side while the script goes on.

#define WORKERS 4
int threads[WORKERS];

// Files to save: the backup has to cope with blanks in names and with sub-folders left alone.
subroutine make_sample(folder)
{
  int i;
  morv_mkdir(folder + "/data");
  for (i = 1; i < 6; i++) morv_file_write(isprint(folder, "/data/report ", i, ".txt"), isprint("Report ", i, "\n"));
  morv_file_write(folder + "/data/empty.txt", "");
  morv_file_write(folder + "/data/skip.tmp", "not worth saving");
}

// Waits for the copies that run, and answers how many of them failed.
int wait_for_all(int running)
{
  int i; int failed;
  failed = 0;
  for (i = 0; i < running; i++) if (ithread_join(threads[i]) != 0) failed = failed + 1;
  return failed;
}

// Copies the files of a list, WORKERS at a time; answers how many copies failed.
function copy_all(names, from, to)
{
  int i; int running; int failed;
  running = 0; failed = 0;
  for (i = 0; i < morv_list_count(names); i++) {
    $name = morv_list_get(names, i);
    threads[running] = ithread_create(isprint("cp -p \"", from, "/", $name, "\" \"", to, "/", $name, "\""));
    running = running + 1;
    if (running == WORKERS) { failed = failed + wait_for_all(running); running = 0; }
  }
  return failed + wait_for_all(running);
}

// Lists the files that differ from their copies; answers how many there are.
function verify(names, from, to)
{
  int i; int bad;
  bad = 0;
  for (i = 0; i < morv_list_count(names); i++) {
    $name = morv_list_get(names, i);
    $original = morv_file_hash(isprint(from, "/", $name));
    if (morv_strcmp($original, morv_file_hash(isprint(to, "/", $name))) != 0) {
      printf("  differs: %s\n", $name);
      bad = bad + 1;
    }
  }
  return bad;
}

int main()
{
  int names; int i;
  $work = isprint("backup-", morv_random_hex(4));
  $data = isprint($work, "/data");
  $saved = isprint($work, "/saved");
  morv_mkdir($work);
  make_sample($work);
  morv_mkdir($saved);

  names = morv_glob(isprint($data, "/*.txt"));
  printf("%d files to save\n", morv_list_count(names));
  for (i = 0; i < morv_list_count(names); i++)
    printf("  %-14s %3d bytes\n", morv_list_get(names, i), morv_file_size(isprint($data, "/", morv_list_get(names, i))));

  printf("copying: %d failed\n", copy_all(names, $data, $saved));
  printf("checking: %d differ\n", verify(names, $data, $saved));

  // A list of what was saved goes beside the copies, one line a file, in the form of sha256sum.
  for (i = 0; i < morv_list_count(names); i++) {
    $name = morv_list_get(names, i);
    ifprint(isprint($saved, "/SHA256"), morv_file_hash(isprint($saved, "/", $name)), "  ", $name);
  }
  printf("manifest: %d lines\n", morv_file_lines(isprint($saved, "/SHA256")));

  // Damage one copy: the check finds it.
  morv_file_write(isprint($saved, "/report 3.txt"), "Report 8\n");
  printf("after damage:\n");
  printf("checking: %d differs\n", verify(names, $data, $saved));

  // morv_exec starts a program and gives its exit status; ibash gives what it prints.
  $count = morv_trim(ibash(isprint("ls ", $saved, " | wc -l")));
  printf("%s files in the backup\n", $count);
  printf("removed: %d\n", morv_exec(isprint("rm -r ", $work)) == 0 && morv_file_exists($work) == 0);
  return 0;
}
