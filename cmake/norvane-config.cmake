include(${CMAKE_CURRENT_LIST_DIR}/NorvaneDependencies.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/norvane-targets.cmake)
