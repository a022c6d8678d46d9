# A thin face over CMake, its presets and the scripts: see README.md.

.DEFAULT_GOAL := check
.PHONY: demo check check-windows package bench bench-short bench-programs format clean configure

BUILD := cmake --build --preset release
BENCHMARKS := $(addprefix build/bench/benchmarks/lum_bench_,texts decoders trees)

configure:
	@scripts/bootstrap build
	@cmake --preset release

# Runs the main jobs on the example files and tells what it does.
demo: configure
	@$(BUILD) --target lumattr typical_path decode_devices
	@examples/demo build/release

# Builds everything and passes the tests.
check: configure
	@$(BUILD)
	@ctest --preset release

# Builds the Windows libraries and programs and passes the tests under Wine.
check-windows:
	@scripts/bootstrap windows
	@cmake --preset windows
	@cmake --build --preset windows
	@ctest --preset windows
	@tr -d '\r' <build/windows/Testing/Temporary/LastTest.log | \
		sed -n -e '/: Skipped$$/{n;s/^/skipped: /p;}' -e '/^skipped: /p' | sort | uniq -c

# Makes Debian packages and an archive for Windows in build/package, of what the checks built.
package:
	@scripts/bootstrap build windows package
	@scripts/package

# Compares with other libraries, writes docs/performance.md anew, and prints how the bulk operations
# grow with the size of the tree.
bench: bench-programs
	@benchmarks/report.py --write docs/performance.md $(BENCHMARKS)
	@build/bench/benchmarks/lum_tree_scaling

# The same once and briefly: only the answers count.
bench-short: bench-programs
	@benchmarks/report.py --short $(BENCHMARKS)
	@build/bench/benchmarks/lum_tree_scaling

bench-programs:
	@scripts/bootstrap build bench
	@cmake --preset bench
	@cmake --build --preset bench

# Puts every source into the project's format.
format:
	@scripts/bootstrap format
	@scripts/format

clean:
	@rm -rf build
