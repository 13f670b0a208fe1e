# Thin calls of the presets in CMakePresets.json.
.DEFAULT_GOAL := help
.PHONY: help deps build demo test asan lint bench install clean

help:
	@echo "make demo     install what is missing, build, draw the gallery into build/gallery/"
	@echo "make test     install what is missing, build, run every test"
	@echo "make asan     the tests under address and undefined-behaviour sanitizers"
	@echo "make lint     clang-format and clang-tidy"
	@echo "make bench    the benchmarks"
	@echo "make install  install the library, its header and mkbarcode (PREFIX, default /usr/local)"
	@echo "make clean    remove build/"

deps:
	@scripts/install-deps.sh

build: deps
	cmake --preset release
	cmake --build --preset release

demo: build
	build/release/tools/mkbarcode/mkbarcode gallery build/gallery

test: build
	ctest --preset release

asan: deps
	cmake --preset asan
	cmake --build --preset asan
	ctest --preset asan

lint:
	@scripts/install-deps.sh --lint
	cmake --preset release
	cmake --build --preset release
	scripts/lint.sh

bench: build
	build/release/bench/barcode_bench --benchmark_out=build/bench.json --benchmark_out_format=json

PREFIX ?= /usr/local
install: build
	cmake --install build/release --prefix $(PREFIX)

clean:
	rm -rf build
