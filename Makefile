# A thin face over CMake, its presets and the scripts: see README.md.

.DEFAULT_GOAL := check
.PHONY: demo check check-windows check-deep coverage fuzz package bench bench-short counts \
	bench-programs format clean configure

BUILD := cmake --build --preset release
BENCHMARKS := $(addprefix build/release/benchmarks/lum_bench_,texts decoders logs trees memory loading)

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

# The long forms of what .ci/run does in short, and each fuzzer for 20 minutes: hours.
check-deep: configure
	@scripts/bootstrap ci
	@$(BUILD)
	@LUM_DIFFERENTIAL_INPUTS=10000000 LUM_KILLS=5000 LUM_WRITES=1000 ctest --preset release
	@cmake --preset asan && cmake --build --preset asan && ctest --preset asan-whole
	@scripts/check-surroundings
	@scripts/check-valgrind
	@scripts/check-tidy
	@scripts/fuzz --seconds 1200

# Builds the Windows libraries and programs and passes the tests under Wine.
check-windows:
	@scripts/bootstrap windows
	@cmake --preset windows
	@cmake --build --preset windows
	@ctest --preset windows
	@tr -d '\r' <build/windows/Testing/Temporary/LastTest.log | \
		sed -n -e '/: Skipped$$/{n;s/^/skipped: /p;}' -e '/^skipped: /p' | sort | uniq -c

# Lets every fuzzer run for so many seconds; docs/fuzzing.md. SEED=1 makes the run repeatable.
SECONDS := 20
fuzz:
	@scripts/bootstrap build ci
	@scripts/fuzz --seconds $(SECONDS) $(if $(SEED),--seed $(SEED)) $(if $(JOBS),--jobs $(JOBS))

# Makes Debian packages and an archive for Windows in build/package, of what the checks built.
package:
	@scripts/bootstrap build windows package
	@scripts/package

# Compares with other libraries, writes docs/performance.md anew, and prints how further bulk
# operations grow with the size of the tree. FILTER='CanVal|look-up' only prints what matches.
bench: bench-programs
	@benchmarks/report.py $(if $(FILTER),--filter '$(FILTER)',--write docs/performance.md) $(BENCHMARKS)
	@$(if $(FILTER),,build/release/benchmarks/lum_tree_scaling)

# The same once, briefly and without the largest trees: only the answers count.
bench-short: bench-programs
	@benchmarks/report.py --short $(if $(FILTER),--filter '$(FILTER)') $(BENCHMARKS)
	@$(if $(FILTER),,build/release/benchmarks/lum_tree_scaling --short)

# Holds the allocations and instructions of the hot operations to benchmarks/counts.json, which
# `make counts UPDATE=--update` writes anew.
counts: bench-programs
	@scripts/check-counts $(UPDATE)

# Tells which branches of the library no test takes, and fails when one is not explained in
# tests/coverage-exceptions.txt. Pages with the sources come by `make coverage HTML=--html`.
coverage:
	@scripts/bootstrap build ci
	@scripts/coverage $(HTML)

# Contenders whose library is not there are left out, which the report tells.
bench-programs:
	@scripts/bootstrap build
	@scripts/bootstrap bench || echo "Going on with what is there."
	@cmake --preset release
	@$(BUILD) --target lum_benchmarks

# Puts every source into the project's format.
format:
	@scripts/bootstrap format
	@scripts/format

clean:
	@rm -rf build
