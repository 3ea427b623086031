# What a client that links one library does: it asks the package for that library alone, checks
# that it was asked for none of the Qt modules given (the library does not need them), and builds
# main.cpp against that library.
function(norva_package_client library)
  find_package(NorvaRuntime REQUIRED COMPONENTS ${library})
  foreach(module IN LISTS ARGN)
    if(TARGET Qt6::${module})
      message(FATAL_ERROR "NorvaRuntime asked a ${library} client for Qt ${module}")
    endif()
  endforeach()
  add_executable(norva-client main.cpp)
  target_link_libraries(norva-client PRIVATE NorvaRuntime::${library})
endfunction()
