# What makes the data set: a small program for each product, which ninja links from what the product rests on and runs
# when that has changed. To be included before any target.
set(making ${CMAKE_CURRENT_LIST_DIR})

# For all that is compiled.
set(CMAKE_CXX_COMPILER_LAUNCHER ${making}/at_its_start ${CMAKE_CXX_COMPILER_LAUNCHER})

# One build at a time in this folder. ninja has this done before it looks at anything else, since its own description
# rests on it.
set(turn ${CMAKE_BINARY_DIR}/turn)
if(NOT EXISTS ${turn})
    file(TOUCH ${turn})
endif()
add_custom_target(one_maker COMMAND ${making}/one_maker ${turn} ${CMAKE_SOURCE_DIR} BYPRODUCTS ${turn}
                  USES_TERMINAL VERBATIM COMMENT "One build at a time")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${turn})

# rows_of(HEADER): the rows of its table, to `files` and `words`: the first word of each, and the second.
function(rows_of header)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
    file(READ ${header} text)
    string(REGEX MATCHALL "{\"[^\"]+\",[ \n]+\"?[^\",}]+" rows "${text}")
    set(files)
    set(words)
    foreach(row IN LISTS rows)
        string(REGEX MATCH "{\"(.+)\",[ \n]+\"?(.+)" row ${row})
        list(APPEND files ${CMAKE_MATCH_1})
        list(APPEND words ${CMAKE_MATCH_2})
    endforeach()
    set(files ${files} PARENT_SCOPE)
    set(words ${words} PARENT_SCOPE)
endfunction()

# add_products(HEADER LIBRARY FOLDER [OPTION...]): the products of a header's table, from what LIBRARY has, below FOLDER,
# made with those options of a custom command. Their paths below it are appended to `products`.
function(add_products header library folder)
    rows_of(${CMAKE_SOURCE_DIR}/${header})
    foreach(file make IN ZIP_LISTS files words)
        string(MAKE_C_IDENTIFIER make_${file} maker)
        add_executable(${maker} ${making}/maker.cpp)
        target_compile_definitions(${maker} PRIVATE TABLE="${header}" MAKE=${make})
        target_link_libraries(${maker} PRIVATE ${library})
        set_property(TARGET ${maker} PROPERTY RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/makers)
        add_custom_command(OUTPUT "${folder}/${file}" DEPENDS ${maker} VERBATIM COMMENT "Making ${file}"
                           COMMAND ${making}/make_once $<TARGET_FILE:${maker}> "${folder}/${file}" ${ARGN})
    endforeach()
    set(products ${products} ${files} PARENT_SCOPE)
endfunction()

# lay_products(FROM TO): a target `data` that lays all `products`, once they are made, into a folder.
function(lay_products from to)
    list(TRANSFORM products PREPEND ${from}/ OUTPUT_VARIABLE files)
    add_custom_target(data ALL COMMAND lay ${from} ${to} ${products} DEPENDS ${files} VERBATIM USES_TERMINAL
                      COMMENT "Laying the data set")
endfunction()
