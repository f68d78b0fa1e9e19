# Each folder of src/ is one object target whose include path holds only the folders it may use,
# so that an include against the flow  api -> svg -> vg -> vg/raster  does not compile. The include
# roots are folders of symbolic links in the build tree.

set(layer_root ${PROJECT_BINARY_DIR}/layers)

function(layer_link layer path)
  get_filename_component(folder ${layer_root}/${layer}/${path} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${path} ${layer_root}/${layer}/${path} SYMBOLIC)
endfunction()

layer_link(base base)
layer_link(raster vg/raster)
layer_link(vg vg)
foreach(header vg.h vgu.h engine.h)  # all of the engine that the library side may see
  layer_link(engine vg/${header})
endforeach()
layer_link(svg svg)
layer_link(packing api/packing)
layer_link(api api)

# add_layer(name folder layers...): an object target of the folder's own sources.
function(add_layer name folder)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp
       ${PROJECT_SOURCE_DIR}/src/${folder}/*.h)
  add_library(quor_${name} OBJECT ${sources})
  foreach(layer ${ARGN})
    target_include_directories(quor_${name} PRIVATE ${layer_root}/${layer})
  endforeach()
endfunction()
