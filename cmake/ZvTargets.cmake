# Compile settings as INTERFACE targets that each target links, never global flags.
add_library(zv_options INTERFACE)
target_compile_features(zv_options INTERFACE cxx_std_20)
target_include_directories(zv_options INTERFACE ${PROJECT_SOURCE_DIR}/src)

add_library(zv_warnings INTERFACE)
target_compile_options(zv_warnings INTERFACE -Wall -Wextra -Wshadow -Wconversion -Wno-sign-conversion -Wno-missing-field-initializers)
if(ZV_WARNINGS_AS_ERRORS)
  target_compile_options(zv_warnings INTERFACE -Werror)
endif()

add_library(zv_sanitizers INTERFACE)
if(ZV_SANITIZE)
  target_compile_options(zv_sanitizers INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zv_sanitizers INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all)
endif()
# The fuzzing build: every target compiled with libFuzzer's coverage, only the fuzz
# target linked with its main.
if(ZV_BUILD_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "ZV_BUILD_FUZZ needs clang (tools/fuzz/run.sh sets it)")
  endif()
  target_compile_options(zv_sanitizers INTERFACE -fsanitize=fuzzer-no-link)
endif()

# zv_link_defaults(target): the settings every project target takes.
function(zv_link_defaults target)
  target_link_libraries(${target} PRIVATE zv_options zv_warnings zv_sanitizers)
endfunction()
