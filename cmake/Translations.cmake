find_package(Qt6 6.4 REQUIRED COMPONENTS LinguistTools)

# tl_embed_translations(TARGET FILES a_de.ts …): compiles Qt Linguist files into the target. Their language is what stands behind
# the underscore. The toolkit finds them when it loads the first interface file.
function(tl_embed_translations target)
    cmake_parse_arguments(ARG "" "" "FILES" ${ARGN})
    set(compiled "")
    foreach(file IN LISTS ARG_FILES)
        get_filename_component(name "${file}" NAME_WE)
        set(output "${CMAKE_CURRENT_BINARY_DIR}/${name}.qm")
        add_custom_command(OUTPUT "${output}"
            COMMAND Qt6::lrelease -silent "${file}" -qm "${output}"
            DEPENDS "${file}"
            VERBATIM)
        set_source_files_properties("${output}" PROPERTIES QT_RESOURCE_ALIAS "${name}.qm")
        list(APPEND compiled "${output}")
    endforeach()
    qt6_add_resources(${target} "${target}_translations" PREFIX "/interface-translations" FILES ${compiled}
        OPTIONS --no-compress OUTPUT_TARGETS objects)
    set_property(TARGET ${target} APPEND PROPERTY TL_INTERFACE_OBJECTS ${objects})
endfunction()
