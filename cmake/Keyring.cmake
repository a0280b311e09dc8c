# The desktop's keyring, for hosts that choose it (TLJiraOptions::Secrets::Keyring). In a build without it that choice is an error of
# every login.
set(TL_KEYRING AUTO CACHE STRING "Support the desktop's keyring, through QtKeychain: ON, OFF, or AUTO where that is installed")
set_property(CACHE TL_KEYRING PROPERTY STRINGS AUTO ON OFF)

set(TL_HAS_KEYRING OFF)
if(TL_KEYRING STREQUAL "AUTO")
    find_package(Qt6Keychain QUIET)
    if(Qt6Keychain_FOUND)
        set(TL_HAS_KEYRING ON)
    endif()
elseif(TL_KEYRING)
    find_package(Qt6Keychain REQUIRED)
    set(TL_HAS_KEYRING ON)
endif()
message(STATUS "The desktop's keyring: ${TL_HAS_KEYRING}")
