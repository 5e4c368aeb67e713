# GoogleTest, built from the distribution's sources with the flags of the product.
set(GTEST_SOURCES /usr/src/googletest/googletest CACHE PATH "Sources of GoogleTest")

add_library(gtest STATIC ${GTEST_SOURCES}/src/gtest-all.cc)
target_include_directories(gtest SYSTEM PUBLIC ${GTEST_SOURCES}/include)
target_include_directories(gtest PRIVATE ${GTEST_SOURCES})
target_compile_definitions(gtest PUBLIC GTEST_HAS_EXCEPTIONS=0 GTEST_HAS_RTTI=0)
target_link_libraries(gtest PUBLIC tarvellon_flags)
