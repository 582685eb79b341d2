int main()
{
printf("%d %d %d\n", morv_mkdir("n_dir"), imkdir("n_dir"), imkdir("n_none/dir"));
ifile_write("n_dir/a", "x");
printf("%d %d\n", ifile_exists("n_dir/a"), iremove("n_dir"));
printf("%d %d\n", irename("n_dir/a", "n_dir/b"), morv_rename("n_dir/a", "n_dir/b"));
printf("%d %d\n", ifile_exists("n_dir/a"), ifile_exists("n_dir/b"));
printf("%d %d %d\n", morv_chdir("n_dir"), morv_ends_with(morv_cwd(), "/n_dir"), ifile_size("b"));
printf("%d %d\n", ichdir(".."), ichdir("n_none"));
printf("%d %d %d\n", morv_remove("n_dir/b"), iremove("n_dir/b"), iremove("n_dir"));
printf("%d %d %d %d\n", imkdir(1), iremove(1), irename("a", 1), ichdir(1));
printf("%d %d %d %d\n", iglob(5), iglob_r("n_dir", 5), ifile_replace("n_none", "a", "b"), ifile_replace("n_dir", 1, "b"));
return 0;
}
