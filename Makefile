# Entry points for people: `make run` builds and starts the application, `make test`
# builds and runs the test suite, `make package` builds a Debian package. All of them
# install the needed packages first.
BUILD_DIR ?= build
ASAN_BUILD_DIR ?= build-asan
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=
PACKAGE_BUILD_DIR ?= build-package
# Warnings are errors for the project's own development and CI (`make test`, `make asan`);
# `make run` and `make build` keep what the build folder has (off at first).
WERROR ?=
test: WERROR = ON
WERROR_FLAG = $(if $(WERROR),-DQB_WERROR=$(WERROR))

.PHONY: deps configure build run test package package-check bench asan fuzz format clean

deps:
	@scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(WERROR_FLAG) $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	@scripts/run-app.sh $(BUILD_DIR)/bin/quillbox2

# The tests' temporary folders go into one folder of this run, removed afterwards whatever
# the outcome, so a crashed or killed test leaves nothing in /tmp.
test: build
	@tmp=$$(mktemp -d /tmp/quillbox2-test-run.XXXXXX) && cd $(BUILD_DIR) && \
	  { TMPDIR=$$tmp QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS) -LE package; \
	    status=$$?; chmod -R u+rwX "$$tmp"; rm -rf "$$tmp"; exit $$status; }

# A Debian package in $(PACKAGE_BUILD_DIR) (quillbox2_<version>_<arch>.deb), built as a
# packager would: Debian's hardening flags, and a new compiler's new warning stays a warning.
package: deps
	@cmake -S . -B $(PACKAGE_BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DQB_HARDENING=ON -DQB_WERROR=OFF -DQB_BUILD_TESTS=OFF -DQB_BUILD_BENCHMARKS=OFF \
	  $(CMAKE_FLAGS) >/dev/null
	@cmake --build $(PACKAGE_BUILD_DIR) -j $(JOBS) --target package

# Checks of the installed tree and the package (QB_TEST_PACKAGE_INSTALL=1 also installs it).
package-check: build
	@cd $(BUILD_DIR) && ctest --output-on-failure -L package

bench: deps
	@cmake -S . -B build-bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DQB_BUILD_TESTS=OFF >/dev/null
	@cmake --build build-bench -j $(JOBS) --target benchmarks
	@for b in build-bench/bench/bin/*; do echo "== $$b"; "$$b" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true; done

asan: deps
	@cmake -S . -B $(ASAN_BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQB_SANITIZE=ON -DQB_BUILD_BENCHMARKS=OFF -DQB_WERROR=ON >/dev/null
	@cmake --build $(ASAN_BUILD_DIR) -j $(JOBS)
	@cd $(ASAN_BUILD_DIR) && QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 ctest --output-on-failure -j $(JOBS)

# Fuzzes the quotes database reader (FUZZ_SECONDS, default 60); never part of build or test.
FUZZ_SECONDS ?= 60
fuzz:
	@scripts/fuzz-quotes-reader.sh $(FUZZ_SECONDS)

format: configure
	@cmake --build $(BUILD_DIR) --target format

clean:
	rm -rf $(BUILD_DIR) $(ASAN_BUILD_DIR) $(PACKAGE_BUILD_DIR) build-bench build-fuzz
