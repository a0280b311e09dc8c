# The Debian packages: "make packages" builds them from an existing build.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tljiracontroller)
# Each package has its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_VENDOR "TLJiraController developers")
set(CPACK_PACKAGE_CONTACT "TLJiraController developers <tljiracontroller@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL client runtime development tool)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
foreach(component CLIENT RUNTIME TOOL)
    set(CPACK_DEBIAN_${component}_PACKAGE_SHLIBDEPS ON)
endforeach()
# Where the dependencies between the project's own libraries are found; these packages are named below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/client" "${PROJECT_BINARY_DIR}/framework")
set(same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

# The texts' lines are those of a control file: a summary, then paragraphs.
set(about "TLJiraController is a framework that a desktop application uses so that its
user can attach the open document to a Jira issue, list an issue's documents
and open one of them.")

set(CPACK_DEBIAN_CLIENT_PACKAGE_NAME libtljiracontrollerclient1)
set(CPACK_DEBIAN_CLIENT_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_CLIENT_DESCRIPTION "Documents of Jira issues for desktop applications - client library
${about}
.
This package has the library that talks to the server. It needs no window
system.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libtljiracontroller1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libtljiracontrollerclient1 ${same_version}")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "Documents of Jira issues for desktop applications - window library
${about}
.
This package has the library with the windows that an application opens.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtljiracontroller-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libtljiracontroller1 ${same_version}, libtljiracontrollerclient1 ${same_version}, qt6-base-dev (>= 6.4)")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "Documents of Jira issues for desktop applications - development files
${about}
.
This package has the headers, the interface files that an application may
change, and what CMake and pkg-config need.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME tljira)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "libtljiracontrollerclient1 ${same_version}")
set(CPACK_DEBIAN_TOOL_DESCRIPTION "Attach documents to Jira issues and fetch them from the command line
tljira logs in to a Jira server, uploads files to an issue, lists an issue's
attachments and downloads them. It needs no window system.")

# For packages that depend on the libraries. CPack's own list is not used: it stumbles over the plug-in, which has no version.
function(tl_describe_library component file_name)
    set(folder "${PROJECT_BINARY_DIR}/debian/${component}")
    set(package "${CPACK_DEBIAN_${component}_PACKAGE_NAME}")
    file(WRITE "${folder}/shlibs" "${file_name} ${PROJECT_VERSION_MAJOR} ${package} (>= ${PROJECT_VERSION})\n")
    file(WRITE "${folder}/triggers" "activate-noawait ldconfig\n")
    set(CPACK_DEBIAN_${component}_PACKAGE_CONTROL_EXTRA "${folder}/shlibs" "${folder}/triggers" PARENT_SCOPE)
endfunction()
tl_describe_library(CLIENT libTLJiraControllerClient)
tl_describe_library(RUNTIME libTLJiraController)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${component}" upper_component)
    list(APPEND packages "${component}=${CPACK_DEBIAN_${upper_component}_PACKAGE_NAME}")
endforeach()
configure_file("${CMAKE_CURRENT_LIST_DIR}/debian/AddDocuments.cmake.in" "${PROJECT_BINARY_DIR}/AddDocuments.cmake" @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_BINARY_DIR}/AddDocuments.cmake")

include(CPack)
