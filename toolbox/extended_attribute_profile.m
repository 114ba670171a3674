function [EAP, failures] = extended_attribute_profile (X, varargin)
%EXTENDED_ATTRIBUTE_PROFILE  Attribute profiles of all bands of an image.
%
%   EAP = extended_attribute_profile (X, A, L)
%   EAP = extended_attribute_profile (X, A, L, C)
%   EAP = extended_attribute_profile (X, A, L, C, F)
%   EAP = extended_attribute_profile (..., 'progress')
%   EAP = extended_attribute_profile (..., 'cluster', CONNECTIONS)
%   [EAP, failures] = extended_attribute_profile (...)
%
%   Computes the attribute profile of each band of X, all with the same
%   attribute, thresholds, connectivity and rule, and stacks the profiles.  The
%   bands are typically the first principal components of a picture of many
%   wavelengths, brought to integers.
%
%   Input
%
%   X  the image, rows x columns x bands, of class uint8, int8, uint16, int16,
%      uint32, int32, uint64 or int64; not empty.  A matrix is one band.
%   A, L, C, F  attribute, thresholds, connectivity and filtering rule, as in
%      attribute_profile.  A rule that is given is printed once, by band 1.
%   'progress'  after them: a line is printed for each finished band, with the
%      seconds that this band took, as in
%        band 3 of 12, 4.1 s
%      Bands that run in parallel print theirs in the order they finish.
%   'cluster', CONNECTIONS  after them, in Octave: the bands run on the servers of
%      Octave's own cluster.  See below.  Without 'progress'.
%
%   Output
%
%   EAP  rows x columns x (bands * (2N + 1)), of the class of X, for N
%        thresholds: the 2N + 1 planes of band 1, those of band 2, and so on.
%        Plane k of band b is EAP(:,:,(b-1)*(2*N+1)+k).
%   failures  a cell of bands x 1 with the error message of each band, '' where
%        there was none.  With this output an error in some of the bands is not
%        raised: their planes are 0, and the profiles of the others are there.
%
%   Parallel bands
%
%   In MATLAB the bands are the passes of a parfor loop: they run on the workers
%   of a parallel pool where the Parallel Computing Toolbox is there, on a
%   cluster's as well, and one after another without it.  In Octave they run on
%   all cores after 'pkg load parallel', and one after another without it.  The
%   result is the same.  Bands and profiles are copied between the processes, so
%   little is gained where a band takes less than some tenths of a second.  Each
%   band at work needs the memory of a call of attribute_profile, and EAP is held
%   twice at the end.
%
%   A cluster
%
%   Octave's package parallel makes a cluster of machines on which
%   octave-pserver runs (as any user but root), with attribute_profile on the
%   path of that user's Octave:
%     pkg load parallel
%     connections = pconnect ({'node1', 'node2'});
%     EAP = extended_attribute_profile (X, A, L, 'cluster', connections);
%     sclose (connections);
%   Bands and profiles travel over the network.  The rule is not printed, and
%   there is no progress.
%
%   Errors
%
%   Inputs that are not as above are errors.  An error of attribute_profile keeps
%   its message, after the number of its band in a cluster; all bands are
%   finished before it is raised.  If all bands fail it is raised in any case.
%
%   Example
%
%     X = uint8 (cat (3, magic (8), magic (8)'));
%     EAP = extended_attribute_profile (X, 'area', [3 10], 'progress');
%     size (EAP)          % 8 x 8 x 10
%     EAP(:,:,6:10)       % the profile of the second band
%
%   See also attribute_profile, differential_attribute_profile

% SPDX-License-Identifier: MIT

  if nargin < 1
    error ('extended_attribute_profile: give an image, an attribute and thresholds');
  end
  if ~isinteger (X) || ndims (X) > 3 || isempty (X)
    error ('extended_attribute_profile: X has to be a rows x columns x bands array of an integer class, not empty');
  end
  [settings, progress, connections] = options_of (varargin);
  bands = size (X, 3);
  clustered = ~isempty (connections);
  if clustered
    [profiles, failures] = profiles_of_cluster (connections, X, settings);
  elseif bands > 1 && exist ('parcellfun', 'file')
    numbers = reshape (num2cell (1:bands), 1, 1, bands);
    work = @attempt;  % the processes find a function of this file by its handle, not by its name
    [profiles, failures] = parcellfun (min (nproc (), bands), @(band, k) work (band, k, bands, settings, progress), ...
                                       num2cell (X, [1 2]), numbers, 'UniformOutput', false);
  else
    profiles = cell (1, bands);
    failures = cell (1, bands);
    parfor k = 1:bands
      [profiles{k}, failures{k}] = attempt (X(:,:,k), k, bands, settings, progress);
    end
  end

  failed = reshape (find (~cellfun (@isempty, failures)), 1, []);
  if numel (failed) == bands || (~isempty (failed) && nargout < 2)
    problem = failures{failed(1)};
    if clustered
      problem.message = sprintf ('band %d: %s', failed(1), problem.message);
    end
    error (problem);
  end
  messages = repmat ({''}, bands, 1);
  whole = profiles{find (cellfun (@isempty, failures), 1)};
  for k = failed
    messages{k} = failures{k}.message;
    profiles{k} = zeros (size (whole), class (whole));
  end
  failures = messages;
  EAP = cat (3, profiles{:});
end

% The inputs for attribute_profile, and the options that stand after them in any order.
function [settings, progress, connections] = options_of (inputs)
  inputs = with_char (inputs);
  option = @(name) find (cellfun (@(input) ischar (input) && strcmp (input, name), inputs), 1);
  progress = ~isempty (option ('progress'));
  inputs(option ('progress')) = [];
  connections = [];
  k = option ('cluster');
  if ~isempty (k)
    if progress
      error ('extended_attribute_profile: a cluster tells no progress: leave ''progress'' or ''cluster'' out');
    elseif ~exist ('netcellfun', 'file')
      error ('extended_attribute_profile: ''cluster'' needs Octave''s package parallel: pkg load parallel');
    elseif k ~= numel (inputs) - 1 || ~isa (inputs{end}, 'pconnections')
      error ('extended_attribute_profile: after ''cluster'' give the connections that pconnect returned');
    end
    connections = inputs{end};
    inputs(k:end) = [];
  end
  settings = inputs;
end

% What runs on a server is sent to it as text, with its arguments: no function of this file, but one of the server's path.
% An error is handed on as a result here too.
function [profiles, failures] = profiles_of_cluster (connections, X, settings)
  work = @(band, settings) eval ('attribute_profile (band, settings{:})', 'lasterror ()');
  profiles = netcellfun (connections, work, num2cell (X, [1 2]), repmat ({settings}, [1 1 size(X, 3)]), ...
                         'UniformOutput', false);
  failures = cell (size (profiles));
  for k = find (reshape (cellfun (@isstruct, profiles), 1, []))
    failures{k} = struct ('message', profiles{k}.message, 'identifier', profiles{k}.identifier);
  end
end

% A process of parcellfun hands on neither an error nor its message; so the message travels as a result.
function [AP, failure] = attempt (varargin)
  AP = [];
  failure = [];
  try
    AP = profile_of_band (varargin{:});
  catch problem
    failure = struct ('message', problem.message, 'identifier', problem.identifier);
  end
end

function AP = profile_of_band (band, k, bands, settings, progress)
  start = tic;
  if k == 1
    AP = attribute_profile (band, settings{:});
  else
    evalc ('AP = attribute_profile (band, settings{:});');  % without the line that tells the rule
  end
  if progress
    fprintf ('band %d of %d, %.1f s\n', k, bands, toc (start));
  end
end

%!function profiles_are_stacked (X)
%!  for attribute = {'area', 'std'}
%!    alone = cellfun (@(band) attribute_profile (band, attribute{1}, [2 9], 8), num2cell (X, [1 2]), ...
%!                     'UniformOutput', false);
%!    assert (extended_attribute_profile (X, attribute{1}, [2 9], 8), cat (3, alone{:}));
%!  endfor
%!endfunction

%!function messages_are_those_of_one_band (X)
%!  for settings = {{'area', []}, {'area', 3, 5}, {'perimeter', 3}, {}}
%!    message = '';
%!    try, attribute_profile (X(:,:,1), settings{1}{:}); catch problem, message = problem.message; end_try_catch
%!    fail ('extended_attribute_profile (X, settings{1}{:})', ['^' regexptranslate('escape', message) '$']);
%!  endfor
%!endfunction

%!shared X
%! X = uint8 (cat (3, magic (9), magic (9)', mod (7 * magic (9), 81)));

%!test <*one band after another>
%! profiles_are_stacked (X);
%! profiles_are_stacked (X(:,:,2));
%! messages_are_those_of_one_band (X);

%!test <*the bands in parallel, where Octave's package is installed>
%! package = pkg ('list', 'parallel');
%! if ~isempty (package)
%!   was_loaded = package{1}.loaded;
%!   pkg load parallel
%!   unwind_protect
%!     profiles_are_stacked (X);
%!     profiles_are_stacked (X(:,:,2));
%!     messages_are_those_of_one_band (X);
%!     one = evalc ("extended_attribute_profile (X(:,:,1), 'area', 3, 4, 'max');");
%!     assert (one, "Filtering Rule: max\n");  % one band needs no process of its own
%!     for bad = {{'cluster', 5}, {'cluster'}, {'cluster', 5, 8}}
%!       fail ("extended_attribute_profile (X, 'area', 3, bad{1}{:})", 'give the connections that pconnect');
%!     endfor
%!   unwind_protect_cleanup
%!     if ~was_loaded
%!       pkg unload parallel
%!     endif
%!   end_unwind_protect
%! endif

%!testif ; ~exist ('netcellfun', 'file') <*a cluster needs a package>
%! fail ("extended_attribute_profile (X, 'area', 3, 'cluster', 5)", 'pkg load parallel');

%!testif ; ~exist ('parcellfun', 'file') <*the rule is printed once, and a line for each band>
%! printed = evalc ("extended_attribute_profile (X, 'area', 3, 4, 'max', 'progress');");
%! assert (regexprep (printed, '\d+\.\d s', 't'), ...
%!         "Filtering Rule: max\nband 1 of 3, t\nband 2 of 3, t\nband 3 of 3, t\n");

%!error <give an image, an attribute> extended_attribute_profile ()
%!test <*X is an array of up to three dimensions, of an integer class, not empty>
%! for bad = {double(X), X > 3, X(:,:,[]), cat(4, X, X)}
%!   fail ("extended_attribute_profile (bad{1}, 'area', 3)", 'X has to be');
%! endfor
