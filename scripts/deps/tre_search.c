/* Goes into tre-match-parallel.c before the matcher, which calls tre_pass_by and tre_search. They find what it would find, in less
   time. */

/* The first place from `at` on where a match can begin, or the end. */
static char const * tre_next_start(tre_tnfa_t const * tnfa, char const * at) {
  if (tnfa->first_char >= 0) {
    char const * found = strchr(at, tnfa->first_char);
    return found != NULL ? found : at + strlen(at);
  }
  if (tnfa->firstpos_chars != NULL)
    while (*at != '\0' && !tnfa->firstpos_chars[(unsigned char)*at])
      at++;
  return at;
}

/* Moves the matcher, which is at no state, on to where a match can begin. `str_byte` is behind the next character. */
static void tre_pass_by(tre_tnfa_t const * tnfa, char const ** str_byte, tre_char_t * prev_c, tre_char_t * next_c,
                        int * pos) {
  char const * const here = *str_byte - 1;
  char const * const start = tre_next_start(tnfa, here);
  if (start == here)
    return;
  *prev_c = (unsigned char)start[-1];
  *next_c = (unsigned char)*start;
  *pos += start - here;
  *str_byte = start + 1;
}

#define TRE_SEARCH_STATES 64
#define TRE_SEARCH_SETS 32
#define TRE_SEARCH_UNKNOWN 255

/* A set of states is a bit for each. The sets that the text has led to so far are kept, each with those that a character leads to
   from there, unless it is the last one of the text. */
typedef struct {
  tre_tnfa_t const * tnfa;
  int eflags;
  int depends_on_words;
  tre_tnfa_transition_t const * states[TRE_SEARCH_STATES];
  uint64_t starts, starts_at_end; /* the states that a match begins with behind the first character */
  int num_sets;
  uint64_t sets[TRE_SEARCH_SETS];
  unsigned char next[TRE_SEARCH_SETS][256];
} tre_search_t;

static int tre_search_holds(tre_search_t * search, int assertions, int at_begin, int at_end) {
  if (assertions & (ASSERT_AT_BOW | ASSERT_AT_EOW | ASSERT_AT_WB | ASSERT_AT_WB_NEG))
    search->depends_on_words = 1;
  return !((assertions & ASSERT_AT_BOL) && (!at_begin || (search->eflags & REG_NOTBOL))) &&
         !((assertions & ASSERT_AT_EOL) && (!at_end || (search->eflags & REG_NOTEOL)));
}

static uint64_t tre_search_bit(tre_search_t * search, tre_tnfa_transition_t const * i) {
  search->states[i->state_id] = i->state;
  return (uint64_t)1 << i->state_id;
}

static uint64_t tre_search_starts(tre_search_t * search, int at_begin, int at_end) {
  tre_tnfa_transition_t const * i;
  uint64_t set = 0;
  for (i = search->tnfa->initial; i->state != NULL; i++)
    if (!i->assertions || tre_search_holds(search, i->assertions, at_begin, at_end))
      set |= tre_search_bit(search, i);
  return set;
}

static uint64_t tre_search_step(tre_search_t * search, uint64_t set, tre_cint_t prev_c, int at_end) {
  tre_tnfa_t const * tnfa = search->tnfa;
  tre_tnfa_transition_t const * i;
  uint64_t result = at_end ? search->starts_at_end : search->starts;
  for (; set != 0; set &= set - 1)
    for (i = search->states[__builtin_ctzll(set)]; i->state != NULL; i++)
      if (i->code_min <= prev_c && i->code_max >= prev_c &&
          !(i->assertions &&
            (!tre_search_holds(search, i->assertions, 0, at_end) || CHECK_CHAR_CLASSES(i, tnfa, search->eflags))))
        result |= tre_search_bit(search, i);
  return result;
}

/* The index of a set; -1 for a new one without room. */
static int tre_search_index(tre_search_t * search, uint64_t set) {
  int i;
  for (i = 0; i < search->num_sets; i++)
    if (search->sets[i] == set)
      return i;
  if (i == TRE_SEARCH_SETS)
    return -1;
  search->num_sets++;
  search->sets[i] = set;
  memset(search->next[i], TRE_SEARCH_UNKNOWN, sizeof(search->next[i]));
  return i;
}

/* Keeps that `c` leads from the set `from` to `set`, whose index it gives. */
static int tre_search_keep(tre_search_t * search, int from, unsigned char c, uint64_t set) {
  int to = tre_search_index(search, set);
  if (to >= 0) {
    search->next[from][c] = (unsigned char)to;
    return to;
  }
  search->num_sets = 0;
  return tre_search_index(search, set);
}

/* Whether there is a match, and the first place where one ends, without any tags. REG_BADPAT: the matcher has to find out. */
static reg_errcode_t tre_search(tre_tnfa_t const * tnfa, char const * string, int eflags, int * match_end_ofs) {
  tre_search_t search;
  unsigned char const * at = (unsigned char const *)string;
  uint64_t final, set;
  int index, next;

  if (tnfa->num_states > TRE_SEARCH_STATES || (tnfa->cflags & REG_NEWLINE))
    return REG_BADPAT;
  search.tnfa = tnfa;
  search.eflags = eflags;
  search.depends_on_words = 0;
  search.num_sets = 0;
  search.starts = tre_search_starts(&search, 0, 0);
  search.starts_at_end = tre_search_starts(&search, 0, 1);
  final = (uint64_t)1 << (tnfa->num_states - 1);
  set = tre_search_starts(&search, 1, *at == '\0');
  index = tre_search_index(&search, set);
  while (*at != '\0' && !(set & final) && (set | search.starts_at_end) != 0 && !search.depends_on_words) {
    for (; at[1] != '\0' && (next = search.next[index][*at]) != TRE_SEARCH_UNKNOWN; at++)
      index = next;
    set = tre_search_step(&search, search.sets[index], *at, at[1] == '\0');
    if (at[1] != '\0')
      index = tre_search_keep(&search, index, *at, set);
    at++;
  }
  if (search.depends_on_words)
    return REG_BADPAT;
  *match_end_ofs = (set & final) ? (int)((char const *)at - string) : -1;
  return (set & final) ? REG_OK : REG_NOMATCH;
}
