# Options of every target of the project.

# The same pixels on every machine: floats are computed as written.
add_compile_options(-ffp-contract=off -fno-fast-math)

# Square roots are single instructions; their values do not change.
add_compile_options(-fno-math-errno)

# Drawing small pictures is many small calls from folder to folder: inlining them across files makes
# the library a tenth smaller and a second draw at 64 pixels a tenth faster. Whoever configures may
# decide otherwise.
if(CMAKE_BUILD_TYPE STREQUAL Release AND CMAKE_CXX_COMPILER_ID STREQUAL GNU
   AND NOT QUOR_ENGINE_ONLY AND NOT DEFINED CMAKE_INTERPROCEDURAL_OPTIMIZATION)
  include(CheckIPOSupported)
  check_ipo_supported(RESULT has_link_time_optimisation OUTPUT ignored LANGUAGES C CXX)
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ${has_link_time_optimisation})
endif()

if(QUOR_DEVELOPER_WARNINGS)
  add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Warns of std::string's own operator+ (GCC bug 105651).
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
  endif()
endif()

if(QUOR_SANITIZE)
  add_compile_options(-UNDEBUG)  # assertions as well
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
