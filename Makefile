# The door: each goal configures, builds and runs one thing. Everything is made below build/.
.DEFAULT_GOAL := help
.PHONY: help demo test build bench scenes walk fuzz coverage texts format check asan tsan package mutants python-test clean

configure_and_build = cmake --preset $(1) >build/$(1).log 2>&1 || { cat build/$(1).log; exit 1; }; cmake --build --preset $(1)

help:  ## this list
	@sed -nE 's/^([a-z-]+):.*## (.*)/  make \1\t\2/p' $(MAKEFILE_LIST) | expand -t 18

demo: build  ## install what is missing, build, and run the example from end to end
	build/release/bin/delvenbatch -script examples/demo.mel
	@if [ -x build/release/bin/delvenpy ]; then \
	    echo; echo "The regions of the head, by Python:"; \
	    build/release/bin/delvenpy examples/regions.py build/demoRegions.json; \
	fi

test:  ## install what is missing, build, and run every test
	@scripts/install-dependencies.sh build
	@mkdir -p build
	@$(call configure_and_build,release)
	ctest --preset release

build:  ## the programs, in build/release/bin
	@scripts/install-dependencies.sh build
	@mkdir -p build
	@$(call configure_and_build,release) --target delven_programs

python-test:  ## build the Python module and run its tests
	@scripts/install-dependencies.sh build python
	@mkdir -p build
	@$(call configure_and_build,release) --target delven_programs
	ctest --preset release --label-regex '^python$$'

bench:  ## time against size, in one table
	@scripts/install-dependencies.sh build bench
	@mkdir -p build
	@$(call configure_and_build,bench)
	build/bench/bin/delvenbench
	@if [ -x build/bench/bin/delvenpy ]; then build/bench/bin/delvenpy bench/arrays.py; fi

scenes: build  ## open, save, open again and compare every scene (.ma) of the folder SCENES
	@scripts/install-dependencies.sh build check
	scripts/check-scenes.py build/release/bin/delvenbatch "$(SCENES)"

walk:  ## random walks over all commands for WALK_SECONDS (60) seconds from WALK_SEED (1), under the sanitizers
	@scripts/install-dependencies.sh build
	@mkdir -p build
	@$(call configure_and_build,asan) --target delvenwalk DELVENTools
	scripts/walk.sh

fuzz:  ## every fuzz target for FUZZ_SECONDS (30) seconds
	@scripts/install-dependencies.sh build fuzz
	@mkdir -p build
	@$(call configure_and_build,fuzz) --target delven_fuzzers
	scripts/fuzz.sh

coverage:  ## line and branch coverage of source/ by the tests
	@scripts/install-dependencies.sh build coverage
	@mkdir -p build
	@$(call configure_and_build,coverage)
	scripts/coverage.sh

texts:  ## text literals of source/ that no test shows, and why not
	@scripts/install-dependencies.sh build check
	@mkdir -p build
	@$(call configure_and_build,release) --target test_module DELVENTools
	@rm -f build/shown-texts
	cd build/release/tests/module && DELVEN_SHOWN_TEXTS=$(CURDIR)/build/shown-texts ../../bin/test_module --gtest_brief=1 >/dev/null 2>&1
	scripts/check-texts.py build/shown-texts

asan:  ## the tests under AddressSanitizer and UndefinedBehaviorSanitizer
	@scripts/install-dependencies.sh build
	@mkdir -p build
	@$(call configure_and_build,asan)
	ctest --preset asan

tsan:  ## the threaded tests under ThreadSanitizer
	@scripts/install-dependencies.sh build
	@mkdir -p build
	@$(call configure_and_build,tsan) --target delven_thread_tests
	setarch $$(uname -m) --addr-no-randomize ctest --preset tsan

format:  ## lay out the C++ files as .clang-format says
	@scripts/install-dependencies.sh check
	scripts/check-format.sh --fix

check: build  ## layout, dependencies between the rooms, clang-tidy, compiles with clang and for Windows
	@scripts/install-dependencies.sh check
	scripts/check-format.sh
	scripts/check-dependencies.sh
	scripts/check-tidy.sh
	scripts/check-clang-compile.sh
	scripts/check-windows-compile.sh

package: build  ## build and install the plug-in as for Maya, with a kit made of our own headers
	@scripts/install-dependencies.sh build check
	scripts/check-package.sh

mutants:  ## MUTANTS_COUNT (150) faults of one line in a copy of source/, from MUTANTS_SEED (1): which no test notices
	@scripts/install-dependencies.sh build check
	@scripts/mutants.py

clean:  ## remove build/
	rm -rf build
