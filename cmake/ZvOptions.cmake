# Build switches of the project, all with the ZV_ prefix.
option(ZV_BUILD_GUI "Build the Qt desktop program (src/forms)" ON)
option(ZV_BUILD_TESTS "Build the test suites" ON)
option(ZV_BUILD_BENCH "Build the benchmarks" ON)
option(ZV_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(ZV_WARNINGS_AS_ERRORS "Fail the build on any compiler warning" OFF)
option(ZV_BUILD_FUZZ "Build the libFuzzer target of tools/fuzz (clang only)" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

# Rebuilds in several work trees share compiled objects when ccache is there.
find_program(ZV_CCACHE ccache)
if(ZV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${ZV_CCACHE}")
endif()

# Without Qt 6 the desktop program and its tests are left out: the libraries, the
# command line, their tests and the benchmarks still build.
if(ZV_BUILD_GUI)
  find_package(Qt6 6.4 QUIET COMPONENTS Widgets Test)
  if(NOT Qt6_FOUND)
    message(WARNING "Qt 6 (Widgets, Test) not found: building without the desktop program and its tests. "
                    "scripts/setup.sh installs it; or configure with -DZV_BUILD_GUI=OFF to say so.")
    set(ZV_BUILD_GUI OFF)
  endif()
endif()
