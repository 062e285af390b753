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
endif()
