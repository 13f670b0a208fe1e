# Thin calls of the presets in CMakePresets.json.
.DEFAULT_GOAL := help
.PHONY: help deps deps-test deps-hosts deps-lint deps-fuzz deps-packages build demo everything test asan tsan fuzz soak proof \
  same lint bench install uninstall portable packages dist deb wheel npm test-packages clean

help:
	@echo "make demo       install what is missing, build, draw the gallery into build/gallery/index.html"
	@echo "make test       install what is missing, build, run every test"
	@echo "make packages   install what is missing, build the Debian, Python and Node packages into build/packages/"
	@echo "The targets below install no packages; they say so if any is missing."
	@echo "make deps       install what the library and mkbarcode need to build"
	@echo "make deps-test  the same, and what tests and benchmarks need; make deps-lint: the linters too"
	@echo "make build      the library and mkbarcode"
	@echo "make asan       the tests under address and undefined-behaviour sanitizers"
	@echo "make tsan       the tests of threads under the thread sanitizer"
	@echo "make fuzz       the fuzz targets under both, with Clang (SECONDS=60 each; make deps-fuzz installs it)"
	@echo "make soak       many draws, while memory, descriptors and threads are watched (DRAWS=1000000)"
	@echo "make proof      random labels of every type, read back by independent readers (LABELS=10000 each)"
	@echo "make same       compare the library byte for byte with that of a commit (BASE=commit, ARGS=...)"
	@echo "make lint       clang-format and clang-tidy"
	@echo "make bench      the benchmarks"
	@echo "make install    install the library, its header and mkbarcode (PREFIX, default /usr/local)"
	@echo "make uninstall  remove what make install has installed there"
	@echo "make dist       the source tarball; make deb, wheel, npm: a package of its own; all into build/packages/"
	@echo "make test-packages  the packages in bare systems, and each built twice (make deps-packages)"
	@echo "make clean      remove build/"

deps:
	@scripts/install-deps.sh

deps-test:
	@scripts/install-deps.sh --test

deps-hosts:
	@scripts/install-deps.sh --hosts

deps-packages:
	@scripts/install-deps.sh --packages

deps-lint:
	@scripts/install-deps.sh --lint

deps-fuzz:
	@scripts/install-deps.sh --fuzz

# The library and the tool.
build:
	@scripts/install-deps.sh --check
	cmake --preset library
	cmake --build --preset library

# The same with tests and benchmarks.
everything:
	@scripts/install-deps.sh --test --check
	cmake --preset release
	cmake --build --preset release

demo: deps
	$(MAKE) build
	build/library/bin/mkbarcode gallery build/gallery

test: deps-test
	$(MAKE) everything
	ctest --preset release

asan tsan:
	@scripts/install-deps.sh --test --check
	cmake --preset $@
	cmake --build --preset $@
	ctest --preset $@

SECONDS ?= 60
fuzz:
	@scripts/install-deps.sh --fuzz --check
	cmake --preset fuzz
	cmake --build --preset fuzz
	scripts/fuzz.sh $(SECONDS)

DRAWS ?= 1000000
soak:
	@scripts/install-deps.sh --test --check
	cmake --preset release
	cmake --build --preset release --target soak
	build/release/tests/fuzz/soak --draws $(DRAWS)

LABELS ?= 10000
proof:
	@scripts/install-deps.sh --test --check
	cmake --preset release
	cmake --build --preset release --target label_proof
	build/release/tests/label_proof/label_proof --labels $(LABELS) --jobs $(shell nproc)

same:
	@test -n "$(BASE)" || { echo "make same BASE=commit: which commit's library is to be compared with?" >&2; exit 2; }
	@scripts/install-deps.sh --test --check
	scripts/same.sh $(BASE) $(ARGS)

# The linters read what a configured tree says about each source; nothing is built.
lint:
	@scripts/install-deps.sh --lint --check
	cmake --preset release
	scripts/lint.sh

bench: everything
	build/release/bench/barcode_bench --benchmark_out=build/bench.json --benchmark_out_format=json
	build/release/bench/batch_ratios
	LD_LIBRARY_PATH=build/release/lib PYTHONPATH=build/release/python python3 bench/python_ratios.py \
	  build/release/bench/liblabel_loop.so
	node build/release/node/bench/ratios.mjs

# DESTDIR stages the installation in another folder.
PREFIX ?= /usr/local
install: build
	scripts/install.sh build/library $(PREFIX)

uninstall:
	scripts/install.sh --uninstall build/library $(PREFIX)

# One file that needs the C library alone: what the Python and the Node package carry.
portable:
	cmake --preset portable
	cmake --build --preset portable

packages: deps-packages
	rm -rf build/packages
	$(MAKE) dist deb wheel npm

dist:
	scripts/dist.sh build/packages

deb: dist
	packaging/build-deb.sh build/packages

wheel: portable
	python/build-wheel.sh build/packages

npm: portable
	node/build-tarball.sh build/packages

test-packages:
	@scripts/install-deps.sh --packages --check
	tests/packages/run.sh build/packages

clean:
	rm -rf build
