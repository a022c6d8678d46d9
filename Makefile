# A thin face over CMake, its presets and the scripts: see README.md.

.DEFAULT_GOAL := check
.PHONY: demo check bench format clean build

# The tool, the examples and the tests in one release build.
build:
	@scripts/bootstrap build
	@cmake --preset release $(if $(wildcard build/release/CMakeCache.txt),>build/release/configure.log)
	@cmake --build --preset release

# Runs the main job on the example files and tells what it does.
demo: build
	@examples/demo build/release

# Builds everything and passes the tests.
check: build
	@ctest --preset release

# Prints how the bulk operations grow with the size of the tree.
bench: build
	@build/release/benchmarks/lum_tree_scaling

# Puts every source into the project's format.
format:
	@scripts/bootstrap format
	@scripts/format

clean:
	@rm -rf build
