
# The installation that this file lies in, so that its package is found.
get_filename_component(kivara_prefix ${CMAKE_CURRENT_LIST_DIR}/../../.. ABSOLUTE)
list(APPEND CMAKE_FIND_ROOT_PATH ${kivara_prefix})
list(APPEND CMAKE_PREFIX_PATH ${kivara_prefix})
