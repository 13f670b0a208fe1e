# Thin calls of the presets in CMakePresets.json.
.DEFAULT_GOAL := help
.PHONY: help build demo everything test asan same lint bench install clean

help:
	@echo "make demo     install what is missing, build, draw the gallery into build/gallery/"
	@echo "make test     install what is missing, build, run every test"
	@echo "make asan     the tests under address and undefined-behaviour sanitizers"
	@echo "make same     compare the library byte for byte with that of a commit (BASE=commit, ARGS=...)"
	@echo "make lint     clang-format and clang-tidy"
	@echo "make bench    the benchmarks"
	@echo "make install  install the library, its header and mkbarcode (PREFIX, default /usr/local)"
	@echo "make clean    remove build/"

# The library and the tool.
build:
	@scripts/install-deps.sh
	cmake --preset release -DBARCODE_BUILD_TESTS=OFF -DBARCODE_BUILD_BENCH=OFF
	cmake --build --preset release

# The same with tests and benchmarks.
everything:
	@scripts/install-deps.sh --test
	cmake --preset release -DBARCODE_BUILD_TESTS=ON -DBARCODE_BUILD_BENCH=ON
	cmake --build --preset release

demo: build
	build/release/tools/mkbarcode/mkbarcode gallery build/gallery

test: everything
	ctest --preset release

asan:
	@scripts/install-deps.sh --test
	cmake --preset asan
	cmake --build --preset asan
	ctest --preset asan

same:
	@test -n "$(BASE)" || { echo "make same BASE=commit: which commit's library is to be compared with?" >&2; exit 2; }
	@scripts/install-deps.sh --test
	scripts/same.sh $(BASE) $(ARGS)

lint:
	@scripts/install-deps.sh --lint
	cmake --preset release -DBARCODE_BUILD_TESTS=ON -DBARCODE_BUILD_BENCH=ON
	cmake --build --preset release
	scripts/lint.sh

bench: everything
	build/release/bench/barcode_bench --benchmark_out=build/bench.json --benchmark_out_format=json

PREFIX ?= /usr/local
install: build
	cmake --install build/release --prefix $(PREFIX)

clean:
	rm -rf build
