# A room of the kit: every source of src/<name>, compiled once, joined into the library "norvane".
set(NORVANE_ROOMS "" CACHE STRING "Only these rooms (and their tests) are built; all when empty")

add_library(norvane_options INTERFACE)
target_include_directories(norvane_options INTERFACE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
target_link_libraries(norvane_options INTERFACE Threads::Threads)
if(NORVANE_STRICT)
    target_compile_options(norvane_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
        -Woverloaded-virtual -Wimplicit-fallthrough -Werror)
    # GCC 12 takes the unused alternatives of a variant, and texts that grow, for faults once it inlines them.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_BUILD_TYPE STREQUAL "Release")
        target_compile_options(norvane_options INTERFACE -Wno-maybe-uninitialized -Wno-restrict)
    endif()
endif()

function(norvane_room name)
    cmake_parse_arguments(ROOM "" "" "LIBRARIES" ${ARGN})
    if(NORVANE_ROOMS AND NOT name IN_LIST NORVANE_ROOMS)
        return()
    endif()
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
    if(NOT sources)
        return()
    endif()
    add_library(norvane_${name} OBJECT ${sources})
    target_link_libraries(norvane_${name} PRIVATE norvane_options ${ROOM_LIBRARIES})
    target_sources(norvane PRIVATE $<TARGET_OBJECTS:norvane_${name}>)
    target_link_libraries(norvane PRIVATE ${ROOM_LIBRARIES})
endfunction()

# The tests of a room: tests/<name>/*.cpp in one program.
function(norvane_room_tests name)
    if(NORVANE_ROOMS AND NOT name IN_LIST NORVANE_ROOMS)
        return()
    endif()
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
    if(NOT sources)
        return()
    endif()
    add_executable(${name}-tests ${sources})
    target_link_libraries(${name}-tests PRIVATE norvane_test_support ${ARGN})
    gtest_discover_tests(${name}-tests TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
        PROPERTIES TIMEOUT 1500 LABELS ${name})
endfunction()
