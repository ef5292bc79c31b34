set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
if(NOT EMSCRIPTEN)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()

# What every target of this project is compiled with; never exported to users of the library.
add_library(pagerex_build_flags INTERFACE)
target_compile_options(pagerex_build_flags INTERFACE -Wall -Wextra -Wshadow $<$<BOOL:${PAGEREX_WERROR}>:-Werror>
                       -ffunction-sections -fdata-sections)
# A multiplication and an addition in one step round once instead of twice: where a processor has such a step,
# as 64-bit ARM does, digits would come out other than on a processor that has not.
target_compile_options(pagerex_build_flags INTERFACE -ffp-contract=off)
# On 32-bit systems the plain file functions fail for files, inodes and times that do not fit 32 bits.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_compile_definitions(pagerex_build_flags INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
endif()
# On 32-bit ARM GCC notes each call whose convention GCC 7.1 changed.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^arm")
  target_compile_options(pagerex_build_flags INTERFACE "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-psabi>")
endif()
# At -O3 GCC 12 warns of its own library: of strings joined and of vectors compared or appended to.
target_compile_options(pagerex_build_flags INTERFACE
  "$<$<AND:$<COMPILE_LANG_AND_ID:CXX,GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict;-Wno-stringop-overread;-Wno-stringop-overflow>")
# ON is what this was before it had a choice.
set(PAGEREX_SANITIZER_FLAGS "")
if(PAGEREX_SANITIZE STREQUAL "thread")
  set(PAGEREX_SANITIZER_FLAGS -fsanitize=thread)
elseif(PAGEREX_SANITIZE MATCHES "^(address|ON)$")
  set(PAGEREX_SANITIZER_FLAGS -fsanitize=address,undefined)
elseif(PAGEREX_SANITIZE)
  message(FATAL_ERROR "PAGEREX_SANITIZE is address, thread or empty, not ${PAGEREX_SANITIZE}")
endif()
# The dynamic C++ runtime costs each process the relocation of some 1.4 MB, most of which is never used.
add_library(pagerex_runtime INTERFACE)
if(PAGEREX_STATIC_RUNTIME AND NOT PAGEREX_SANITIZER_FLAGS)
  target_link_options(pagerex_runtime INTERFACE -static-libstdc++ -static-libgcc)
endif()
if(PAGEREX_SANITIZER_FLAGS)
  # Reports need lines, not variables, which would take a quarter of the time of a build.
  target_compile_options(pagerex_build_flags INTERFACE -O1 -g1 -fno-omit-frame-pointer ${PAGEREX_SANITIZER_FLAGS}
                         -fno-sanitize-recover=undefined)
  target_link_options(pagerex_build_flags INTERFACE ${PAGEREX_SANITIZER_FLAGS})
endif()
# Counting lines, the fuzzers do no more than run the inputs that they are given.
if(PAGEREX_BUILD_FUZZERS AND NOT PAGEREX_COVERAGE)
  target_compile_options(pagerex_build_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(PAGEREX_COVERAGE)
  target_compile_options(pagerex_build_flags INTERFACE -fprofile-instr-generate -fcoverage-mapping)
  target_link_options(pagerex_build_flags INTERFACE -fprofile-instr-generate)
endif()
