# One static library per directory, all programs in bin/, the same warnings for everything.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

add_library(vantrel_build_rules INTERFACE)
target_compile_options(vantrel_build_rules INTERFACE
    -Wall -Wextra -Wconversion -Wold-style-cast
    # g++ 12 reports false overflows for inlined insertions at the end of a vector.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-array-bounds -Wno-stringop-overflow>
    $<$<BOOL:${VANTREL_WARNINGS_AS_ERRORS}>:-Werror>)
target_compile_definitions(vantrel_build_rules INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# scripts/check-hardening checks the programs for the effects. Debian's flags for packages say the same, apart from
# -fcf-protection.
if(NOT VANTREL_SANITIZE AND NOT VANTREL_FUZZ)
    add_compile_options(-fPIE -fstack-protector-strong -fstack-clash-protection -fcf-protection
        $<$<CONFIG:Release>:-U_FORTIFY_SOURCE> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
    add_link_options(-pie LINKER:-z,relro,-z,now)
endif()

if(VANTREL_SANITIZE)
    # -g1 keeps the line numbers of the reports and halves the debug information.
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
    add_link_options(-fsanitize=address,undefined)
    find_program(VANTREL_LLD ld.lld)
    if(VANTREL_LLD)
        add_link_options(-fuse-ld=lld)
    endif()
endif()
if(VANTREL_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
    add_link_options(-fsanitize=address,undefined)
endif()

# vantrel_library(NAME [WIDGETS] SOURCES … LINK …): the static library of one directory. Headers are included by their
# path from src/ or from the root of the tree ("driver/VX7100Access.h", "services/host/ServiceHost.h"). WIDGETS runs moc
# and uic.
function(vantrel_library name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "WIDGETS" "" "SOURCES;LINK")
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE vantrel_build_rules)
    if(ARG_WIDGETS)
        set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON)
    endif()
endfunction()

# vantrel_program(NAME SOURCES … LINK …)
function(vantrel_program name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINK")
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} vantrel_build_rules)
endfunction()

# vantrel_test(NAME [CORE | WIDGETS] SOURCES … LINK …): a GoogleTest program that ctest runs as one process. CORE creates a
# QCoreApplication, WIDGETS a QApplication and links QTest.
function(vantrel_test name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "CORE;WIDGETS" "" "SOURCES;LINK")
    set(support ${PROJECT_SOURCE_DIR}/tests/support)
    if(ARG_WIDGETS)
        list(APPEND ARG_SOURCES ${support}/WidgetTestMain.cpp)
        list(APPEND ARG_LINK GTest::gtest Qt6::Test)
    elseif(ARG_CORE)
        list(APPEND ARG_SOURCES ${support}/CoreTestMain.cpp)
        list(APPEND ARG_LINK GTest::gtest)
    else()
        list(APPEND ARG_LINK GTest::gtest_main)
    endif()
    vantrel_program(${name} SOURCES ${ARG_SOURCES} LINK ${ARG_LINK})
    if(VANTREL_SANITIZE)
        # The libraries under test keep these checks. In the tests themselves every EXPECT would expand to many of them,
        # which takes a third of the compile time.
        target_compile_options(${name} PRIVATE -fno-sanitize=null,alignment,vptr)
        # Sources that share most of their headers are compiled together, in half the time. Names in the anonymous
        # namespaces of a test program must differ.
        set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
        target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    endif()
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
endfunction()
