# Compiler settings shared by every target of the project.
add_library(mox_options INTERFACE)
target_compile_options(mox_options INTERFACE
  -Wall -Wextra -Werror
  # __FILE__ is printed in log lines: keep it relative to the source tree.
  -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)

if(MOX_SANITIZE)
  string(REPLACE "," ";" _mox_sanitizers "${MOX_SANITIZE}")
  foreach(_s IN LISTS _mox_sanitizers)
    target_compile_options(mox_options INTERFACE -fsanitize=${_s})
    target_link_options(mox_options INTERFACE -fsanitize=${_s})
  endforeach()
  target_compile_options(mox_options INTERFACE -fno-omit-frame-pointer -fno-sanitize-recover=all)
endif()

# Fuzz builds instrument the library for coverage; the harnesses add the driver.
if(MOX_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "MOX_FUZZ needs clang (make fuzz sets CXX=clang++)")
  endif()
  target_compile_options(mox_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
