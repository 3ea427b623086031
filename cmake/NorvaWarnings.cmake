# Warnings every target of the project is built with.
function(norva_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                           -Wold-style-cast -Wcast-align -Woverloaded-virtual)
  if(NORVA_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
option(NORVA_WERROR "Treat warnings as errors" OFF)
