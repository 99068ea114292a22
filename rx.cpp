#include "re00005.hpp"
#include <cstdio>
#include <cstdlib>
int main(int c, char ** v) {
  regex_t e;
  int code = regcomp(&e, v[1], atoi(v[2]));
  printf("%d ", code);
  if (!code && c > 3) {
    regmatch_t m;
    int r = regexec(&e, v[3], 1, &m, 0);
    printf("exec %d %d-%d", r, m.rm_so, m.rm_eo);
  }
  puts("");
}
