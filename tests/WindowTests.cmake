# Tests of windows. A part of CMakeLists.txt and not of a folder below, because Qt tells tests the folder of their target,
# and a precompiled header serves only where that is the same.
find_package(Qt6 REQUIRED COMPONENTS Widgets Test)

if(WIN32)
    set(program_folder ${PROJECT_BINARY_DIR}/window-tests)
    tessarine_runtime(tessarine_window_test_runtime ${program_folder} LIBRARIES Test
                      PLUGINS platforms/qoffscreen TRANSLATIONS de es fr pl ru zh_TW)
endif()

# tessarine_test for tests of windows, which have an entry of their own.
function(tessarine_window_test name)
    cmake_parse_arguments(TEST "" "FROM" "ON" ${ARGN})
    tessarine_sources(sources ${CMAKE_CURRENT_SOURCE_DIR}/${TEST_FROM})
    add_executable(${name} ${sources})
    tessarine_window_program(${name})
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE ${TEST_ON} tessarine_window_test_support tessarine_warnings)
    target_precompile_headers(${name} REUSE_FROM tessarine_window_test_support)
    if(WIN32)
        set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${program_folder})
        add_dependencies(${name} tessarine_window_test_runtime)
        # An environment variable of Qt's doesn't get through Wine.
        add_test(NAME ${name} COMMAND ${name} --gtest_brief=1 -platform offscreen)
    else()
        gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES ENVIRONMENT QT_QPA_PLATFORM=offscreen)
    endif()
endfunction()

# An entry with a QApplication, and a recorder for what the windows ask of the desktop.
tessarine_sources(sources ${CMAKE_CURRENT_SOURCE_DIR}/support/qt)
add_library(tessarine_window_test_support STATIC ${sources})
target_compile_definitions(tessarine_window_test_support PRIVATE QT_NO_KEYWORDS)
target_link_libraries(tessarine_window_test_support
    PUBLIC tessarine_shell tessarine_test_support Qt6::Test GTest::gmock PRIVATE tessarine_warnings)
target_precompile_headers(tessarine_window_test_support
    PRIVATE <gmock/gmock.h> <gtest/gtest.h>
            <QAction> <QApplication> <QCheckBox> <QComboBox> <QLabel> <QLineEdit> <QListWidget> <QMenu> <QPushButton>
            <QRadioButton> <QTabWidget> <QTest> <QToolBar>)

tessarine_window_test(settings_test FROM settings ON tessarine_settings)
tessarine_window_test(i18n_test FROM i18n ON tessarine_i18n)
tessarine_window_test(icons_test FROM icons ON tessarine_icons)
tessarine_window_test(shell_test FROM shell ON tessarine_shell pugixml::pugixml)
if(WIN32)
    # What the shell starts for a file type that a test registers.
    add_executable(record-arguments WIN32 shell/entry/RecordArguments.cpp)
    target_link_libraries(record-arguments PRIVATE tessarine_platform tessarine_warnings)
    set_target_properties(record-arguments PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${program_folder})
    add_dependencies(shell_test record-arguments)
endif()
add_dependencies(shell_test tessarine_help)
target_compile_definitions(shell_test PRIVATE TESSARINE_PROGRAM_FOLDER="${PROJECT_BINARY_DIR}/src"
                           TESSARINE_ENGLISH="${PROJECT_SOURCE_DIR}/languages/English.lng"
                           TESSARINE_PACKAGING="${PROJECT_SOURCE_DIR}/packaging/linux")
tessarine_window_test(ui_main_test FROM ui/main ON tessarine_ui_main tessarine_builtin tessarine_sheets)
add_dependencies(ui_main_test tessarine_languages)
target_compile_definitions(ui_main_test PRIVATE TESSARINE_PROGRAM_FOLDER="${PROJECT_BINARY_DIR}/src")
tessarine_window_test(ui_run_test FROM ui/run ON tessarine_ui_run)
add_dependencies(ui_run_test tessarine_languages)
target_compile_definitions(ui_run_test PRIVATE TESSARINE_PROGRAM_FOLDER="${PROJECT_BINARY_DIR}/src")
# All windows, in the look of the program.
tessarine_window_test(accessibility_test FROM accessibility ON tessarine_desktop_parts tessarine_builtin tessarine_sheets)
target_sources(accessibility_test PRIVATE ui/main/MainWindowTest.cpp)
add_dependencies(accessibility_test tessarine_languages)
target_compile_definitions(accessibility_test PRIVATE TESSARINE_PROGRAM_FOLDER="${PROJECT_BINARY_DIR}/src")
if(NOT WIN32)
    # The same from outside, through the bus that screen readers use; skipped where that or a screen is missing.
    add_test(NAME accessibility_bridge COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/accessibility/bridge/walk-windows
             $<TARGET_FILE:tessarine> $<TARGET_FILE:make-sample-decks>)
    set_tests_properties(accessibility_bridge PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 600)
endif()
tessarine_window_test(desktop_test FROM desktop ON tessarine_desktop_parts)
if(NOT WIN32)
    find_package(Qt6 REQUIRED COMPONENTS DBus)
    target_link_libraries(desktop_test PRIVATE Qt6::DBus)
endif()
set_target_properties(desktop_test PROPERTIES AUTOMOC ON)
add_dependencies(desktop_test tessarine tessarine_help)
target_compile_definitions(desktop_test PRIVATE TESSARINE_PROGRAM="$<TARGET_FILE:tessarine>")

# The program as a person uses it, on a screen of its own.
if(WIN32)
    add_test(NAME desktop_walk COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/desktop/walk/walk ${PROJECT_BINARY_DIR})
    add_test(NAME desktop_walk_installed COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/desktop/walk/walk ${PROJECT_BINARY_DIR}
             ${package}-setup.exe)
    set_tests_properties(desktop_walk desktop_walk_installed PROPERTIES RUN_SERIAL ON TIMEOUT 900)
    set_tests_properties(desktop_walk_installed PROPERTIES FIXTURES_REQUIRED packages)
endif()
