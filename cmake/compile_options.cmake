# Options of every target of the project.

# The same pixels on every machine: floats are computed as written.
add_compile_options(-ffp-contract=off -fno-fast-math)

if(QUOR_DEVELOPER_WARNINGS)
  add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
endif()

if(QUOR_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
