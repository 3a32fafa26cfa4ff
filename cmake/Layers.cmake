# tessarine_sources(<variable> <folder>): the sources of a folder. What differs between systems is in files of its own:
# one whose name ends in the other system's word (FilesPosix.cpp, FilesPosixTest.cpp) is left out.
function(tessarine_sources variable folder)
    file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
    if(WIN32)
        list(FILTER sources EXCLUDE REGEX "(Posix|Linux)(Test)?\\.cpp$")
    else()
        list(FILTER sources EXCLUDE REGEX "Windows(Test)?\\.cpp$")
    endif()
    set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# tessarine_layer(<name> FROM <folder under src> [ON <layers directly below>] [USES <libraries of others>] [WINDOWS])
#
# WINDOWS is for layers of windows: they see Qt, and no other layer does.
#
# Layers share a precompiled header, one for those of windows and one for all others: half of compiling is reading the
# headers of Qt and of the standard library.
#
# One static library per layer. Its include root shows only its own folder, and it links only the layers below it, so
# an include of a layer above does not compile.
# The target tessarine_layers is all of them, without the programs.
add_custom_target(tessarine_layers)
function(tessarine_layer name)
    cmake_parse_arguments(LAYER "WINDOWS" "FROM" "ON;USES" ${ARGN})
    tessarine_sources(sources ${PROJECT_SOURCE_DIR}/src/${LAYER_FROM})
    add_library(${name} STATIC ${sources})
    add_dependencies(tessarine_layers ${name})

    set(view ${PROJECT_BINARY_DIR}/layers/${name})  # holds one link: this layer's folder
    cmake_path(GET LAYER_FROM PARENT_PATH parent)
    file(MAKE_DIRECTORY ${view}/${parent})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${LAYER_FROM} ${view}/${LAYER_FROM} SYMBOLIC)
    target_include_directories(${name} PUBLIC ${view})
    target_link_libraries(${name} PUBLIC ${LAYER_ON} PRIVATE tessarine_warnings ${LAYER_USES})
    if(LAYER_WINDOWS)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS)  # "emit" and "signals" stay names for everybody
        target_link_libraries(${name} PUBLIC Qt6::Widgets)
        tessarine_precompile(${name} TESSARINE_QT_HEADERS
            <algorithm> <functional> <memory> <optional> <string> <vector>
            <QAction> <QApplication> <QCheckBox> <QComboBox> <QDialog> <QGridLayout> <QGroupBox> <QKeyEvent> <QLabel>
            <QLineEdit> <QListWidget> <QMenu> <QPainter> <QPushButton> <QRadioButton> <QString> <QTabWidget> <QTimer>
            <QToolBar> <QVBoxLayout>)
    else()
        tessarine_precompile(${name} TESSARINE_STANDARD_HEADERS
            <algorithm> <array> <cstdint> <functional> <map> <memory> <optional> <string> <string_view>
            <unordered_map> <utility> <vector>)
    endif()
endfunction()

# tessarine_precompile(<name> <property> <header>...): the first layer makes the precompiled header, the others use it.
function(tessarine_precompile name property)
    get_property(maker GLOBAL PROPERTY ${property})
    if(maker)
        target_precompile_headers(${name} REUSE_FROM ${maker})
    else()
        set_property(GLOBAL PROPERTY ${property} ${name})
        target_precompile_headers(${name} PRIVATE ${ARGN})
    endif()
endfunction()
