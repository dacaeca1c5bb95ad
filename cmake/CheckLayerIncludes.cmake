# Fails when a source of one layer includes a header of a layer it does not build on.
cmake_minimum_required(VERSION 3.25)
# Called at build time with LAYER (the folder), ALLOWED (the folders it may include, itself
# among them), LAYERS (every layer folder) and FILES (its sources and headers).
set(bad "")
foreach(file IN LISTS FILES)
  file(STRINGS "${file}" lines REGEX "^[ \t]*#[ \t]*include[ \t]*\"[A-Za-z0-9_]+/")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]*\"([A-Za-z0-9_]+)/.*" "\\1" folder "${line}")
    if(folder IN_LIST LAYERS AND NOT folder IN_LIST ALLOWED)
      string(APPEND bad "\n  ${file}: ${line}")
    endif()
  endforeach()
endforeach()
if(bad)
  list(REMOVE_ITEM ALLOWED ${LAYER})
  list(JOIN ALLOWED ", " below)
  message(FATAL_ERROR "${LAYER} builds only on ${below}; these includes reach up or sideways:${bad}\n"
                      "See docs/architecture.md for the order of the layers.")
endif()
