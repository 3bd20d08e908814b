# Builds the page of the viewer and puts it into the tool. The page is built by the machine that builds, whatever system
# the tool is for; the packages of npm are kept in viewer/node_modules, which all builds share.

find_program(VELOXD_NPM NAMES npm npm.cmd NO_CMAKE_FIND_ROOT_PATH)
if(VELOXD_NPM)
  set(npm_is_there ON)
else()
  set(npm_is_there OFF)
endif()
option(VELOXD_VIEWER "Build the viewer for browsers into the oxd tool; takes npm" ${npm_is_there})

# The file `page`, made from the sources in viewer/.
function(veloxd_build_page page)
  set(viewer "${PROJECT_SOURCE_DIR}/viewer")
  set(packages "${viewer}/node_modules/.package-lock.json")
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${viewer}/src/*.ts" "${viewer}/src/*.css")
  cmake_path(GET page PARENT_PATH folder)
  # Not "npm ci", which refuses a lock file without the packages of other platforms.
  add_custom_command(OUTPUT "${packages}"
    COMMAND "${VELOXD_NPM}" install --no-save --no-progress --no-audit --no-fund --silent
    COMMAND "${CMAKE_COMMAND}" -E touch "${packages}"
    DEPENDS "${viewer}/package.json" "${viewer}/package-lock.json"
    WORKING_DIRECTORY "${viewer}" COMMENT "Fetching the packages of the viewer" VERBATIM)
  add_custom_command(OUTPUT "${page}"
    COMMAND "${VELOXD_NPM}" run --silent build -- --outDir "${folder}" --logLevel warn
    DEPENDS "${packages}" "${viewer}/index.html" "${viewer}/vite.config.ts" ${sources}
    WORKING_DIRECTORY "${viewer}" COMMENT "Building the page of the viewer" VERBATIM)
endfunction()

# Gives the object library `name` the source that defines ViewerPage(): the page, or with VELOXD_VIEWER off nothing.
function(veloxd_viewer_page name)
  set(page "")
  if(VELOXD_VIEWER)
    set(page "${PROJECT_BINARY_DIR}/viewer/index.html")
    veloxd_build_page("${page}")
  endif()
  set(source "${CMAKE_CURRENT_BINARY_DIR}/ViewerPage.cpp")
  set(embed "${PROJECT_SOURCE_DIR}/cmake/EmbedPage.cmake")
  add_custom_command(OUTPUT "${source}"
    COMMAND "${CMAKE_COMMAND}" "-DPAGE=${page}" "-DSOURCE=${source}" -P "${embed}"
    DEPENDS "${embed}" ${page} VERBATIM)
  target_sources(${name} PRIVATE "${source}")
  # Static analysis looks at the units that include several sources; this one is there only once something was built.
  set_source_files_properties("${source}" PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
