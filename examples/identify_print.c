// Enrols the fingerprints of a folder and tells whose the prints at the door are.
//
//   vorc -morv -morvquiet identify_print.c
//
// All pictures in prints/ are synthetic. A score of 40 and more is taken for the same finger: among
// synthetic prints hardly a stranger gets that far.

#define MAX_PEOPLE 100
#define SAME_FINGER 40.0

int prints[MAX_PEOPLE];
int people; int names;

// Reads each picture of the folder once; comparing needs only what was found in it.
int enrol(folder)
{
  int i; int files; int count;
  files = morv_glob(folder + "/*.png");
  count = morv_list_count(files);
  names = morv_list_new();
  people = 0;
  for (i = 0; i < count && people < MAX_PEOPLE; i++)
  {
    prints[people] = morv_afis_extract(folder + "/" + morv_list_get(files, i));
    if (prints[people] == 0)
    {
      printf("no picture: %s", morv_list_get(files, i));
      continue;
    }
    morv_list_add(names, morv_replace_all(morv_list_get(files, i), ".png", ""));
    printf("enrolled %s with %d minutiae", morv_list_get(names, people), morv_afis_minutiae(prints[people]));
    people = people + 1;
  }
  morv_list_free(files);
  return people;
}

// The print at the door comes first in each comparison: it is prepared once and then used again.
int identify(picture)
{
  int i; int seen; int best; double score; double best_score;
  seen = morv_afis_extract(picture);
  if (seen == 0) return -1;
  best = -1;
  best_score = 0.0;
  for (i = 0; i < people; i++)
  {
    score = morv_afis_match(seen, prints[i]);
    if (score > best_score)
    {
      best = i;
      best_score = score;
    }
  }
  morv_afis_free(seen);
  if (best_score < SAME_FINGER) return -1;
  printf("%s: %s, score %.0f", picture, morv_list_get(names, best), best_score);
  return best;
}

int main()
{
  int i;
  enrol("prints/enrolled");
  identify("prints/door/monday.png");
  if (identify("prints/door/tuesday.png") < 0) printf("prints/door/tuesday.png: nobody known");
  for (i = 0; i < people; i++) morv_afis_free(prints[i]);
  return 0;
}
