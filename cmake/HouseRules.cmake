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
target_compile_options(house_rules INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)

if(QUILLBAR_SANITIZE)
  add_compile_options(-fsanitize=${QUILLBAR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
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

# house_precompile(TARGET HEADER...): builds with a sanitizer, which nobody works in, read the heaviest headers
# once a target. All others read them where they are included, so that none is forgotten.
function(house_precompile target)
  if(QUILLBAR_SANITIZE AND NOT QUILLBAR_FUZZ)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()
