# What every target of ours is compiled with. Link house_rules privately.
add_library(house_rules INTERFACE)
target_compile_definitions(house_rules INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_NO_CAST_TO_ASCII
  QT_NO_CAST_FROM_BYTEARRAY
  QT_NO_URL_CAST_FROM_STRING
  QT_NO_KEYWORDS
  QT_NO_FOREACH
  QT_NO_CONTEXTLESS_CONNECT
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_STRICT_ITERATORS)
target_compile_options(house_rules INTERFACE -Wall -Wextra -Wpedantic -Werror)
# Generated files, which are then no longer apart, would not pass it in builds with a sanitizer.
if(NOT QUILLBAR_SANITIZE)
  target_compile_options(house_rules INTERFACE -Wconversion)
endif()

if(QUILLBAR_SANITIZE)
  # Of debug information what a report tells: functions and lines.
  add_compile_options(-g1 -fsanitize=${QUILLBAR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QUILLBAR_SANITIZE})
  # This check and coroutines together are more than clang 14 can compile (LLVM's issue 49689).
  if(CMAKE_CXX_COMPILER_ID MATCHES Clang AND QUILLBAR_SANITIZE MATCHES undefined)
    add_compile_options(-fno-sanitize=function)
  endif()
  # The thread sanitizer does not understand fences; the toolkit's headers and generated code use some.
  if(QUILLBAR_SANITIZE MATCHES thread)
    add_compile_options(-Wno-tsan)
  endif()
endif()

# house_hasten(TARGET HEADER...): builds with a sanitizer, which nobody works in, compile many files of a library
# as one and read its heaviest headers once. All others compile each file alone, so that no include is forgotten.
function(house_hasten target)
  if(NOT QUILLBAR_SANITIZE)
    return()
  endif()
  get_target_property(kind ${target} TYPE)
  # The files of the tests are full of short names of their own.
  if(kind STREQUAL STATIC_LIBRARY)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
    # A type of a file's own then counts as one of a header.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  endif()
  if(NOT QUILLBAR_FUZZ)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# house_alone(FILE...): files of a library whose own names clash with those of a neighbour.
function(house_alone)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# house_foreign(FILE...): files of a library that others' programs generated.
function(house_foreign)
  # An option of its own would keep a file out of what is compiled as one.
  if(NOT QUILLBAR_SANITIZE)
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -Wno-conversion)
  endif()
endfunction()
