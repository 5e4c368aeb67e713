# tarvellon_layer(NAME [DEPENDS lower...] [SOURCES name...] [WIN_SOURCES name...]
#                 [PLATFORM name...] [TESTS name...] [WIN_TESTS name...] [HOST_TESTS name...])
#
# One layer of the house: a static library NAME and, with tests on, a runner
# NAME_test. Names stand without their suffix.
#   SOURCES      NAME.cpp, built everywhere
#   WIN_SOURCES  NAME.cpp, all platform: built for Windows only
#   PLATFORM     NAME_win.cpp on Windows, tests/host/NAME_host.cpp elsewhere
#   TESTS        NAME_test.cpp, run everywhere
#   WIN_TESTS    NAME_test.cpp, run on Windows only
#   HOST_TESTS   NAME_test.cpp, which look into the platform stand-ins of the host builds
function(tarvellon_layer layer)
  cmake_parse_arguments(arg "" "" "DEPENDS;SOURCES;WIN_SOURCES;PLATFORM;TESTS;WIN_TESTS;HOST_TESTS" ${ARGN})

  set(files "")
  foreach(name IN LISTS arg_SOURCES)
    list(APPEND files ${CMAKE_CURRENT_SOURCE_DIR}/${name}.cpp)
  endforeach()
  if(WIN32)
    foreach(name IN LISTS arg_WIN_SOURCES)
      list(APPEND files ${CMAKE_CURRENT_SOURCE_DIR}/${name}.cpp)
    endforeach()
    foreach(name IN LISTS arg_PLATFORM)
      list(APPEND files ${CMAKE_CURRENT_SOURCE_DIR}/${name}_win.cpp)
    endforeach()
  else()
    foreach(name IN LISTS arg_PLATFORM)
      list(APPEND files ${CMAKE_SOURCE_DIR}/tests/host/${name}_host.cpp)
    endforeach()
  endif()
  if(NOT files)
    list(APPEND files ${CMAKE_SOURCE_DIR}/cmake/empty.cpp)
  endif()

  add_library(${layer} STATIC ${files})
  target_link_libraries(${layer} PUBLIC tarvellon_flags ${arg_DEPENDS} PRIVATE tarvellon_warnings)

  if(TARVELLON_TESTS)
    set(tests "")
    foreach(name IN LISTS arg_TESTS)
      list(APPEND tests ${CMAKE_CURRENT_SOURCE_DIR}/${name}_test.cpp)
    endforeach()
    if(WIN32)
      foreach(name IN LISTS arg_WIN_TESTS)
        list(APPEND tests ${CMAKE_CURRENT_SOURCE_DIR}/${name}_test.cpp)
      endforeach()
    else()
      foreach(name IN LISTS arg_HOST_TESTS)
        list(APPEND tests ${CMAKE_CURRENT_SOURCE_DIR}/${name}_test.cpp)
      endforeach()
    endif()
    if(tests)
      add_executable(${layer}_test ${tests} ${CMAKE_SOURCE_DIR}/tests/TestMain.cpp)
      target_include_directories(${layer}_test PRIVATE ${CMAKE_SOURCE_DIR}/tests)
      target_link_libraries(${layer}_test PRIVATE ${layer} gtest)
      add_test(NAME ${layer}_test COMMAND ${layer}_test)
    endif()
  endif()
endfunction()
