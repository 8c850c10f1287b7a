# Installs the kit into a folder of its own and builds the README's host program against it, as a stranger would.
function(run_or_fail)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}: ${output}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK_FOLDER})
run_or_fail(${CMAKE_COMMAND} --install ${KIT_BUILD} --prefix ${WORK_FOLDER}/prefix)
run_or_fail(${CMAKE_COMMAND} -S ${SOURCE_FOLDER}/tests/installed -B ${WORK_FOLDER}/build -G Ninja
    -DCMAKE_PREFIX_PATH=${WORK_FOLDER}/prefix -DCMAKE_CXX_FLAGS=${CXX_FLAGS}
    -DHOST_EXAMPLE_SOURCE=${SOURCE_FOLDER}/docs/host-example.cpp)
run_or_fail(${CMAKE_COMMAND} --build ${WORK_FOLDER}/build)
