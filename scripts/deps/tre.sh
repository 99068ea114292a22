# shellcheck shell=bash

# The engine of regular expressions, for single bytes, without approximate matching. As it stands, it goes over a
# pattern by recursion, has a stack for patterns of some 1,000 characters, and takes memory and time without limit: the
# changes give it a larger stack, a walk without recursion, and limits that end in "out of memory". The others mend
# negated brackets whose items overlap, and repetitions in repetitions, whose copies got the same places. The last ones save
# time: places where no match can begin are passed by, and who asks for no offsets has a search without them.
build_tre() {
  local tools=x86_64-w64-mingw32 walk search source
  local sources=(regcomp regerror regexec tre-ast tre-compile tre-match-backtrack tre-match-parallel tre-mem tre-parse
    tre-stack)
  walk=$(<"$root/scripts/deps/tre_walk.c") && search=$(<"$root/scripts/deps/tre_search.c") &&
    debian_source tre "$1" && cd "$1/source/lib" &&
    printf '#define HAVE_SYS_TYPES_H 1\n' >tre-config.h &&
    replace_in tre-compile.c 'tre_stack_new(512, 10240, 128)' 'tre_stack_new(512, 4000000, 4096)' &&
    replace_in tre-compile.c $'tre_ast_to_tnfa(tre_ast_node_t *node,' 'tre_walk_by_recursion(tre_ast_node_t *node,' &&
    replace_in tre-compile.c '/* Converts the syntax tree' "$walk"$'\n/* Converts the syntax tree' &&
    replace_in tre-compile.c 'tre_ast_to_tnfa(tree, NULL, counts, NULL);' \
      'if ((errcode = tre_ast_to_tnfa(tree, NULL, counts, NULL)) != REG_OK) ERROR_EXIT(errcode);' &&
    replace_in tre-parse.c $'\t      curr_max = MAX(max + 1, curr_max);' \
      $'\t      curr_min = curr_max = MAX(max + 1, curr_max);' &&
    replace_in tre-compile.c $'pos_add = tre_stack_pop_int(stack);\n\t    pos_add_last = pos_add;' \
      'int grown = pos_add;
            pos_add_last = tre_stack_pop_int(stack);
            if (iter->min > 1 || iter->max > 1) pos_add = pos_add_last; else pos_add_last = pos_add;' &&
    replace_in tre-compile.c 'pos_add = pos_add_save;' 'pos_add = pos_add_save + grown;' &&
    replace_in tre-compile.c 'pos_add_total += pos_add - pos_add_last;' \
      'if (iter_depth == 0) pos_add_total = pos_add;' &&
    replace_in tre-compile.c 'int num_copied = 0;' 'int num_copied = 0, first = INT_MAX, last = -1;' &&
    replace_in tre-compile.c 'num_copied++;' \
      'num_copied++; first = MIN(first, (int)lit->position); last = MAX(last, (int)lit->position);' &&
    replace_in tre-compile.c '*pos_add += num_copied;' '*pos_add += MAX(num_copied, last - first + 1);' &&
    replace_in tre-compile.c 'if (max_pos > *position)' 'if (max_pos >= *position)' &&
    replace_in tre-compile.c '*position = max_pos;' '*position = max_pos + 1;' &&
    replace_in tre-compile.c '#include <assert.h>' $'#include <assert.h>\n#include <limits.h>' &&
    replace_in tre-mem.h 'int failed;' 'int failed; size_t total;' &&
    replace_in tre-mem.c $'\t  int block_size;' 'int block_size;
          if (size > (size_t)1 << 25 || mem->total > (size_t)1 << 28) { mem->failed = 1; return NULL; }' &&
    replace_in tre-mem.c $'\t  mem->n = block_size;\n' \
      $'\t  mem->n = block_size;\n\t  mem->total += block_size;\n' &&
    replace_in tre-match-parallel.c $'reg_errcode_t\ntre_tnfa_run_parallel(' \
      "$search"$'\n\nreg_errcode_t\ntre_tnfa_run_parallel(' &&
    replace_in tre-match-parallel.c $'  if (!match_tags)\n    num_tags = 0;' 'if (!match_tags) num_tags = 0;
  if (!match_tags && type == STR_BYTE && len < 0) {
    reg_errcode_t result = tre_search(tnfa, string, eflags, match_end_ofs);
    if (result != REG_BADPAT) return result;
  }' &&
    replace_in tre-match-parallel.c 'DPRINT((" init >"));' \
      'if (reach_next_i == reach_next && type == STR_BYTE && len < 0)
            tre_pass_by(tnfa, &str_byte, &prev_c, &next_c, &pos);' || return
  for source in "${sources[@]}"; do
    "$tools-gcc-posix" -O2 -g -DNDEBUG -fno-ipa-ra -Wno-unused-function -DHAVE_ISBLANK -DTRE_REGEX_T_FIELD=value \
      -DTRE_VERSION='"0.8.0"' -c "$source.c" || return
  done
  mkdir -p "$2/lib" "$2/include/tre" "$2/share/licenses/tre" "$2/share/tre" &&
    "$tools-ar" rcs "$2/lib/libtre.a" "${sources[@]/%/.o}" &&
    cp tre.h tre-config.h "$2/include/tre/" &&
    cp ../LICENSE "$2/share/licenses/tre/" &&
    cp ../tests/retest.c "$2/share/tre/"
}

version_tre() { source_version tre libtre-dev; }
