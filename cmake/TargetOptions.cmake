# How the project compiles its own code. Nothing here reaches a project that includes this one.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Language, warnings and sanitizers of every target of the project.
add_library(barcode_options INTERFACE)
target_compile_features(barcode_options INTERFACE cxx_std_20)
target_compile_options(barcode_options INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wconversion -Wshadow>
  $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<BOOL:${BARCODE_WERROR}>>:-Werror>
  # GCC 12 sees overlapping copies in plain string concatenation (its bug 105651).
  $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<CXX_COMPILER_ID:GNU>>:-Wno-restrict>)
if(BARCODE_SANITIZE)
  # The reports need lines; more about the program to debug takes a quarter of the time to compile.
  target_compile_options(barcode_options INTERFACE -fsanitize=${BARCODE_SANITIZE} -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer -g1)
  if(BARCODE_SANITIZE MATCHES "undefined")
    target_compile_options(barcode_options INTERFACE -fsanitize=float-cast-overflow)
  endif()
  target_link_options(barcode_options INTERFACE -fsanitize=${BARCODE_SANITIZE})
endif()
if(BARCODE_FUZZ)
  # Counts the edges that an input takes; the fuzz targets alone link the fuzzer itself. Comparisons are not traced:
  # the targets choose among the words of the library themselves, and it takes a third of the time.
  target_compile_options(barcode_options INTERFACE -fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
endif()

# What an attacker of the shipped binaries finds closed. The sanitizers bring checks of their own.
add_library(barcode_hardening INTERFACE)
if(BARCODE_HARDENING AND NOT BARCODE_SANITIZE)
  foreach(flag -fstack-protector-strong -fcf-protection=full)
    string(MAKE_C_IDENTIFIER "BARCODE_HAS${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
      target_compile_options(barcode_hardening INTERFACE ${flag})
    endif()
  endforeach()
  # The checks of the C library's functions exist only in optimised code.
  target_compile_options(barcode_hardening INTERFACE
    $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3>)
  target_link_options(barcode_hardening INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()

# barcode_own_targets(target...): properties that every target of the project has.
function(barcode_own_targets)
  foreach(target ${ARGN})
    set_target_properties(${target} PROPERTIES
      CXX_EXTENSIONS OFF CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON POSITION_INDEPENDENT_CODE ON)
    target_link_libraries(${target} PRIVATE barcode_options)
  endforeach()
endfunction()

# The same for those that are installed, or become part of what is.
function(barcode_shipped_targets)
  barcode_own_targets(${ARGN})
  foreach(target ${ARGN})
    target_link_libraries(${target} PRIVATE barcode_hardening)
  endforeach()
endfunction()
