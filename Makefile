# The short road. Everything here is a thin wrapper over plain CMake:
#   cmake -S . -B build && cmake --build build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
PREFIX ?= /usr/local
VERSION = $(shell sed -n 's|.*VERSION \([0-9.]*\) LANGUAGES.*|\1|p' CMakeLists.txt)
MAKEFLAGS += --no-print-directory

release = -DCMAKE_BUILD_TYPE=Release -DVORC_WERROR=ON
configure = cmake -S . -B $(1) $(2) >/dev/null && cmake --build $(1) -j $(JOBS)

.PHONY: all help build programs run test sanitize clang mutants bench deb archive site install uninstall clean

all: build

help: ## this list
	@sed -n 's/^\([a-z]*\):.*## \(.*\)/  make \1\t\2/p' Makefile | expand -t 20

build: ## the programs and their tests, in build/
	@scripts/install_dependencies.sh build test
	@$(call configure,build,$(release) -DVORC_TESTS=ON)

# What a user needs and no more.
programs:
	@scripts/install_dependencies.sh build
	@$(call configure,build,$(release) -DVORC_TESTS=OFF)

run: programs ## build the programs and run every example
	@scripts/run_examples.sh build/vorc examples

test: build ## all tests
	@scripts/install_tool_server.sh build/tool-server
	@scripts/run_tests.sh build

sanitize: ## the same tests with addresses, leaks and undefined behaviour checked
	@scripts/install_dependencies.sh build test
	@$(call configure,build-sanitize,$(release) -DVORC_SANITIZE=ON -DVORC_PRECOMPILED_HEADERS=ON)
	@scripts/install_tool_server.sh build-sanitize/tool-server
	@scripts/run_tests.sh build-sanitize

clang: ## a second compiler's opinion: warnings are errors there too
	@scripts/install_dependencies.sh build test clang
	@$(call configure,build-clang,$(release) -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS_RELEASE=-O0)

mutants: ## which changes of FILE=src/... no script case sees; COUNT and TOPICS bound the work
	@scripts/install_dependencies.sh build test
	@$(call configure,build-mutants,$(release))
	@scripts/mutants.py build-mutants $(FILE) --count $(or $(COUNT),20) $(TOPICS)

bench: ## measurements beside the same programs in other languages
	@scripts/install_dependencies.sh build test bench
	@$(call configure,build-bench,$(release) -DVORC_BENCH=ON -DVORC_TESTS=OFF)
	@python3 bench/run.py build-bench/vorc
	@python3 bench/compile.py build-bench/vorc
	@python3 bench/tensors.py build-bench/vorc
	@python3 bench/companions.py build-bench/vorc
	@build-bench/bench/micro_bench
	@build-bench/bench/codec_bench
	@build-bench/bench/pic_bench
	@build-bench/bench/retarget_bench
	@python3 bench/retarget.py build-bench/vorc
	@build-bench/bench/object_bench
	@python3 bench/codes.py build-bench/vorc build-bench/bench/pictures/code_pictures
	@build-bench/bench/codes_bench
	@python3 bench/network.py build-bench/vorc

deb: ## a package for Debian, in dist/
	@scripts/install_dependencies.sh build package
	@$(call configure,build-package,$(release) -DVORC_TESTS=OFF)
	@cpack --config build-package/CPackConfig.cmake -B dist >/dev/null
	@rm -rf dist/_CPack_Packages
	@ls dist/*.deb

archive: ## the sources of the last commit, in dist/; they build without git
	@mkdir -p dist
	@git archive --prefix vorc-$(VERSION)/ -o dist/vorc-$(VERSION).tar.gz HEAD
	@ls dist/vorc-$(VERSION).tar.gz

site: ## the documentation as static pages, in dist/site/
	@scripts/install_dependencies.sh site
	@python3 scripts/site/build.py . dist/site
	@echo "dist/site/index.html"

install: programs ## install below PREFIX (/usr/local), in front of which DESTDIR may stand
	@DESTDIR=$(DESTDIR) cmake --install build --prefix $(PREFIX)

uninstall: ## remove what the last install put there
	@DESTDIR=$(DESTDIR) scripts/uninstall.sh build/install_manifest.txt

clean: ## remove everything that was built
	@rm -rf build build-sanitize build-clang build-bench build-fuzz build-mutants build-package dist
