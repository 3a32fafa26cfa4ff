# Who reads and writes compound files (.ppt, .xls): a library, on Windows the system. Sets TESSARINE_COMPOUND_FILES.
if(WIN32)
    set(TESSARINE_COMPOUND_FILES ole32 uuid)
else()
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(GSF REQUIRED IMPORTED_TARGET libgsf-1)
    set(TESSARINE_COMPOUND_FILES PkgConfig::GSF)
endif()
