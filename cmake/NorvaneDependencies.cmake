# What the library "norvane" stands on: everything comes from the system's packages, nothing is fetched. Installed
# too, for the programs that link the library.
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(OpenSSL REQUIRED)
find_package(CURL REQUIRED)
find_package(SQLite3 REQUIRED)
find_package(SQLiteCpp REQUIRED)
find_package(simdjson REQUIRED)
find_package(PNG REQUIRED)
find_package(ZLIB REQUIRED)
find_package(ICU REQUIRED COMPONENTS i18n uc data)
find_package(Boost 1.81 REQUIRED)
foreach(module cairo libqpdf libsodium libsecret-1 uuid)
    string(REGEX REPLACE "[^A-Za-z0-9]" "_" name ${module})
    pkg_check_modules(${name} REQUIRED IMPORTED_TARGET ${module})
endforeach()
# Only the standard smart pointers of its headers.
target_compile_definitions(PkgConfig::libqpdf INTERFACE POINTERHOLDER_TRANSITION=4)
