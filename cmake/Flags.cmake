# What every target of this project is compiled and linked with.

# No exception crosses a function and no type is asked at run time; the tests
# are built the same way, so that they see the very classes that ship.
add_library(tarvellon_flags INTERFACE)
target_include_directories(tarvellon_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(MSVC)
  target_compile_options(tarvellon_flags INTERFACE /utf-8 /GR- /EHs-c- /permissive-)
  target_compile_definitions(tarvellon_flags INTERFACE _HAS_EXCEPTIONS=0)
else()
  target_compile_options(tarvellon_flags INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti>)
endif()

if(WIN32)
  target_compile_definitions(tarvellon_flags INTERFACE
    UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT
    WINVER=0x0A00 _WIN32_WINNT=0x0A00)
endif()
if(MINGW)
  target_compile_options(tarvellon_flags INTERFACE -ffunction-sections -fdata-sections)
  target_link_options(tarvellon_flags INTERFACE
    -static -static-libgcc -static-libstdc++ -Wl,--gc-sections
    $<$<CONFIG:Release>:-s>)
  string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
endif()

if(NOT WIN32)
  # The platform stand-in of the host builds needs threads and nothing else.
  find_package(Threads REQUIRED)
  target_link_libraries(tarvellon_flags INTERFACE Threads::Threads)
endif()

if(TARVELLON_SANITIZE)
  target_compile_options(tarvellon_flags INTERFACE
    -fsanitize=${TARVELLON_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -g -O1)
  target_link_options(tarvellon_flags INTERFACE -fsanitize=${TARVELLON_SANITIZE})
endif()

# Our own sources, beyond that, are free of warnings.
add_library(tarvellon_warnings INTERFACE)
if(MSVC)
  target_compile_options(tarvellon_warnings INTERFACE /W4 /WX)
else()
  target_compile_options(tarvellon_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wno-sign-conversion -Wshadow
    -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
endif()
