# The front door. Every goal says what it does; the work is done by the scripts
# in scripts/ and .ci/, which can be called alone.
#
#   JOBS=n            parallel jobs (default: all processors)
#   FUZZ_SECONDS=n    time for each fuzz target (default: 60)
#   CONFIGURE="-D..." more options for the build of the tests
#   PELGRIN_TEST_DATA folder of the real files that some tests read

JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 60
export JOBS FUZZ_SECONDS

.DEFAULT_GOAL := help
.PHONY: help demo demo-search test valgrind coverage docs bench fuzz format tidy check package package-test clean

help:
	@echo "PelgrinDLL"
	@echo "  make demo         annotate the example data with pelgrin and show what was found"
	@echo "  make demo-search  let Comet search invented spectra, and pelgrin read what it finds"
	@echo "  make test         build every test beside what demo builds, and run all"
	@echo "  make docs         build the documentation site, build/docs/index.html"
	@echo "  make valgrind     run the tests of the library under valgrind; takes long"
	@echo "  make coverage     tell which lines of the library its tests reach; takes half an hour"
	@echo "  make bench        build and run the benchmarks"
	@echo "  make fuzz         run each fuzz target for FUZZ_SECONDS ($(FUZZ_SECONDS)) seconds"
	@echo "  make format       lay out all sources with clang-format"
	@echo "  make tidy         look at all sources with clang-tidy; takes a quarter of an hour"
	@echo "  make check        all checks, as they run before a change is taken"
	@echo "  make package      build Debian packages in build/package"
	@echo "  make package-test install them on a bare Debian 12 made for that, and use them"
	@echo "  make clean        remove build/"
	@echo "Missing Debian packages are installed first, with sudo where needed."

demo:
	@scripts/install-packages library
	@scripts/build release
	@examples/demo.sh build/release build/demo

demo-search:
	@scripts/install-packages library search
	@scripts/build release pelgrin make_search_data check_search
	@examples/search.sh build/release build/demo-search

# Said each time: the build remembers what "make check" left out.
EVERY_TEST = -DPELGRIN_REPLAY=ON -DPELGRIN_TEST_SHARDS=OFF

test:
	@scripts/install-packages library tests search
	@CONFIGURE="-DPELGRIN_TESTS=ON $(EVERY_TEST) $(CONFIGURE)" scripts/build release
	@scripts/run-tests release

docs:
	@scripts/install-packages docs
	@docs/site/build

valgrind:
	@scripts/install-packages library tests checks
	@scripts/build dev
	@scripts/valgrind

coverage:
	@scripts/install-packages library tests coverage
	@scripts/coverage

bench:
	@scripts/install-packages library bench
	@scripts/build bench
	@bench/run build/bench

fuzz:
	@scripts/install-packages library fuzz
	@scripts/build fuzz
	@BUILD=build/fuzz fuzz/run $(FUZZ_SECONDS)

format:
	@scripts/install-packages checks
	@.ci/check-format --apply

tidy:
	@scripts/install-packages library tests checks bench
	@.ci/check-tidy --all

check:
	@.ci/run

package:
	@scripts/install-packages library package
	@packaging/build

package-test: package
	@packaging/test-fresh-root

clean:
	@rm -rf build
	@echo "build/ is gone"
