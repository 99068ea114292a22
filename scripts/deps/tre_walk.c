/* Goes into tre-compile.c in place of the recursive tre_ast_to_tnfa: the nodes come in the order of the recursion. It runs
   twice, so the transitions are counted before memory is taken for them. */

static size_t tre_size_of(tre_pos_and_tags_t const * set) {
  size_t size = 0;
  while (set[size].position >= 0)
    size++;
  return size;
}

static reg_errcode_t tre_ast_to_tnfa(tre_ast_node_t * tree, tre_tnfa_transition_t * transitions, int * counts,
                                     int * offs) {
  size_t total = 0;
  reg_errcode_t errcode;
  tre_stack_t * stack = tre_stack_new(512, 4000000, 4096);
  if (stack == NULL)
    return REG_ESPACE;
  errcode = tre_stack_push_voidptr(stack, tree);
  while (errcode == REG_OK && tre_stack_num_objects(stack) > 0) {
    tre_ast_node_t * node = tre_stack_pop_voidptr(stack);
    tre_ast_node_t *first = NULL, *second = NULL, *from = NULL, *to = NULL;
    if (node->type == UNION) {
      first = ((tre_union_t *)node->obj)->left;
      second = ((tre_union_t *)node->obj)->right;
    } else if (node->type == CATENATION) {
      from = first = ((tre_catenation_t *)node->obj)->left;
      to = second = ((tre_catenation_t *)node->obj)->right;
    } else if (node->type == ITERATION) {
      first = ((tre_iteration_t *)node->obj)->arg;
      if (((tre_iteration_t *)node->obj)->max == -1)
        from = to = first;
    }
    if (from != NULL) {
      total += tre_size_of(from->lastpos) * tre_size_of(to->firstpos);
      errcode = total > 1000000 ? REG_ESPACE : tre_make_trans(from->lastpos, to->firstpos, transitions, counts, offs);
    }
    if (errcode == REG_OK && second != NULL)
      errcode = tre_stack_push_voidptr(stack, second);
    if (errcode == REG_OK && first != NULL)
      errcode = tre_stack_push_voidptr(stack, first);
  }
  tre_stack_destroy(stack);
  return errcode;
}
