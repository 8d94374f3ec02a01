# Additional clean files
cmake_minimum_required(VERSION 3.16)

if("${CONFIG}" STREQUAL "" OR "${CONFIG}" STREQUAL "RelWithDebInfo")
  file(REMOVE_RECURSE
  "CMakeFiles/quillary-cli_autogen.dir/AutogenUsed.txt"
  "CMakeFiles/quillary-cli_autogen.dir/ParseCache.txt"
  "CMakeFiles/quillary_autogen.dir/AutogenUsed.txt"
  "CMakeFiles/quillary_autogen.dir/ParseCache.txt"
  "CMakeFiles/quillary_core_autogen.dir/AutogenUsed.txt"
  "CMakeFiles/quillary_core_autogen.dir/ParseCache.txt"
  "CMakeFiles/quillary_ui_autogen.dir/AutogenUsed.txt"
  "CMakeFiles/quillary_ui_autogen.dir/ParseCache.txt"
  "quillary-cli_autogen"
  "quillary_autogen"
  "quillary_core_autogen"
  "quillary_ui_autogen"
  "tests/CMakeFiles/quillary_test_support_autogen.dir/AutogenUsed.txt"
  "tests/CMakeFiles/quillary_test_support_autogen.dir/ParseCache.txt"
  "tests/quillary_test_support_autogen"
  )
endif()
