function build_attribute_profile (folder)
%BUILD_ATTRIBUTE_PROFILE  Compile the module attribute_profile from its sources.
%
%   build_attribute_profile ()
%   build_attribute_profile (FOLDER)
%
%   Compiles the sources that come with this file and puts the module into
%   FOLDER, by default the folder of this file: attribute_profile.mexa64 in
%   MATLAB, by `mex`; attribute_profile.mex in GNU Octave, by `mkoctfile --mex`.
%   Needs Linux on x86-64, a C++17 compiler that the host is set up for (GCC 8 or
%   later; `mex -setup C++` in MATLAB), and about a minute.  A failure of the
%   compiler is an error.  A module that is loaded is unloaded first.
%
%   Example
%
%     build_attribute_profile (tempdir)
%     addpath (tempdir)
%     AP = attribute_profile (uint8 (magic (4)), 'area', 3);
%
%   See also attribute_profile, mex, mkoctfile

% SPDX-License-Identifier: MIT

  if ~isunix || ismac
    error ('build_attribute_profile: the module is for Linux on x86-64 only');
  end
  here = fileparts (mfilename ('fullpath'));
  if nargin < 1
    folder = here;
  end
  root = fullfile (here, 'src');
  if ~exist (root, 'dir')
    root = fileparts (here);  % a working copy of the project
  end
  sources = [sources_in(fullfile (root, 'entry')), sources_in(fullfile (root, 'entry', 'types'))];
  include = {['-I' root], ['-I' fullfile(root, 'include')]};
  % A fused multiply-add rounds once where two operations round twice: it would change the sums of the attributes.
  flags = '-std=c++17 -O3 -DNDEBUG -fPIC -fvisibility=hidden -fvisibility-inlines-hidden -ffp-contract=off';

  clear ('attribute_profile');
  fprintf ('Compiling %d files of %s\n', numel (sources), root);
  if exist ('OCTAVE_VERSION', 'builtin')
    % mkoctfile does not know -std itself and reads the flags of the compiler from here.
    before = getenv ('CXXFLAGS');
    restore = onCleanup (@() setenv ('CXXFLAGS', before));
    setenv ('CXXFLAGS', flags);
    module = fullfile (folder, 'attribute_profile.mex');
    exports = ['-Wl,--version-script=' fullfile(root, 'entry', 'exports.map')];
    status = mkoctfile ('--mex', '-o', module, include{:}, exports, sources{:}, ...
                        fullfile (root, 'entry', 'octave', 'adapter.cpp'));
    if status ~= 0
      error ('build_attribute_profile: the compiler failed; its messages are above');
    end
  else
    % MATLAB brings a C++ run-time that may be older than the compiler's: the module carries its own.
    module = fullfile (folder, 'attribute_profile.mexa64');
    mex ('-outdir', folder, '-output', 'attribute_profile', include{:}, sources{:}, ...
         ['CXXFLAGS=$CXXFLAGS ' flags], 'LDFLAGS=$LDFLAGS -static-libstdc++');
  end
  fprintf ('Made %s\n', module);
end

function files = sources_in (folder)
  found = dir (fullfile (folder, '*.cpp'));
  files = cellfun (@(name) fullfile (folder, name), {found.name}, 'UniformOutput', false);
end
