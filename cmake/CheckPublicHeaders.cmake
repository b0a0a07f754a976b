# Each public header, preprocessed alone as C++17, must not define Boost's or ICU's version macro:
# consumers get the library without either set of headers.
# Run as: cmake -DCXX=<compiler> -DSOURCE_DIR=<checkout> -P CheckPublicHeaders.cmake
cmake_minimum_required(VERSION 3.25)
file(GLOB headers "${SOURCE_DIR}/include/foundation/network/*.h")
if(NOT headers)
    message(FATAL_ERROR "no public headers under ${SOURCE_DIR}/include")
endif()
set(failed OFF)
foreach(header IN LISTS headers)
    execute_process(
        COMMAND "${CXX}" -std=c++17 -x c++ -E -dM "-I${SOURCE_DIR}/include"
                "-I${SOURCE_DIR}/core/include" "-I${SOURCE_DIR}/i18n/include" "${header}"
        OUTPUT_VARIABLE macros COMMAND_ERROR_IS_FATAL ANY)
    if(macros MATCHES "#define (BOOST_VERSION|U_ICU_VERSION) ")
        message(SEND_ERROR "${header} pulls in a header that defines ${CMAKE_MATCH_1}")
        set(failed ON)
    endif()
endforeach()
if(NOT failed)
    list(LENGTH headers count)
    message(STATUS "${count} public headers, none pulls in Boost or ICU")
endif()
