# What every target of the project is compiled with: link to quillpress_options.
add_library(quillpress_options INTERFACE)
target_compile_features(quillpress_options INTERFACE cxx_std_20)
target_include_directories(quillpress_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(
  quillpress_options
  INTERFACE $<$<COMPILE_LANGUAGE:C,CXX>:-Wall -Wextra -Wconversion -Wshadow -Werror>
            # The text of numbers must not hang on whether the machine can fuse a multiply and an add.
            $<$<COMPILE_LANGUAGE:C,CXX>:-ffp-contract=off -fvisibility=hidden>
            $<$<COMPILE_LANGUAGE:CXX>:-fvisibility-inlines-hidden>
            # GCC 12 sees overlaps in std::string's own code that cannot be (its bug 105651).
            $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

option(QUILLPRESS_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(QUILLPRESS_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

option(QUILLPRESS_FUZZ "Make fuzzers of the fuzz targets" OFF)
if(QUILLPRESS_FUZZ)
  # The macro is the fuzzers' own convention; it limits how long one program may run.
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_compile_definitions(FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION)
endif()

if(WIN32)
  # Nothing is needed beside the library but the system's own DLLs, and two builds of one source
  # give the same bytes.
  add_link_options(-static -Wl,--no-insert-timestamp)
  # Lines and functions for a debugger, whatever folder the project lies in.
  add_compile_options(-g1 -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
endif()

# Moves a Windows program's or library's symbols, which are more than half of it, to a file beside it
# with ".debug" after its name. Debuggers find it there.
function(keep_symbols_apart target)
  set(file $<TARGET_FILE:${target}>)
  add_custom_command(
    TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug ${file} ${file}.debug
    COMMAND ${CMAKE_STRIP} --strip-all ${file}
    COMMAND ${CMAKE_OBJCOPY} --add-gnu-debuglink=${file}.debug ${file}
    VERBATIM)
endfunction()
