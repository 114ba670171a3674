% SPDX-License-Identifier: MIT
% Every error as an Octave user sees it, and that the session goes on.

%!function check_message (inputs, text)
%!  lasterr ('');
%!  try
%!    evalc ('AP = attribute_profile (inputs{:});');
%!  catch
%!  end_try_catch
%!  assert (lasterr (), ['attribute_profile: ' text]);
%!endfunction

%!shared I
%! I = uint8 (magic (4));

%!test <*what an array is, as the host tells it>
%! classes = ["Data type not supported.\n Please convert the input data to either one of the following types: uint8, " ...
%!            "int8, uint16, int16, uint32, int32, uint64, int64."];
%! row = 'Input 3 has to be a 1xN array of double.';
%! numeric = 'Input 1 has to be a numeric 1D or 2D array.';
%! connectivity = 'This value of connectivity does not match any connectivity rule for 2d images.';
%! faults = {{I}, 'Wrong number of inputs.'; {I, 'a', 3, 4, 5}, 'Input 5 has to be either a string or empty.';
%!           {I, 'a', 3, [4 8]}, 'Input 4 has to be either a scalar double or empty.';
%!           {I, 'a', 3, sparse(0)}, 'Input 4 has to be either a scalar double or empty.';
%!           {[], 'a', 3}, numeric; {{I}, 'a', 3}, numeric; {@sin, 'a', 3}, numeric;
%!           {cat(3, I, I), 'a', 3}, 'Input 1. Data with more than two dimensions are not supported.';
%!           {I, 5, 3}, 'Input 2 has to be a string.'; {I, 'a', 1:0}, 'Input 3 has not to be empty.';
%!           {I, 'a', 3, 1e300}, connectivity; {I, 'a', 3, NaN}, connectivity;
%!           {I, ['ab'; 'cd'], 3}, 'Attribute not supported.';
%!           {I, 'a', 3, 4, 'Min'}, ...
%!           "The filtering rule must be one of the following strings: 'min', 'max', 'direct', 'sub'."};
%! for image = {single(I), I > 3, 1:5, eye(3), sparse(double (I)), sparse(I > 3)}
%!   faults(end+1,:) = {{image{1}, 'a', 3}, classes};
%! endfor
%! for thresholds = {single(3), int8(3), true, 'a', [1; 2], {3}, @sin, struct('a', 3), sparse(4), sparse(zeros (1, 100))}
%!   faults(end+1,:) = {{I, 'a', thresholds{1}}, row};
%! endfor
%! cellfun (@check_message, faults(:,1), faults(:,2));

%!test <*images beyond 32765 rows or columns run out of memory, not into it>
%! for size = {[32766 1], [1 32766], [65537 1], [2 65536], [65536+3 3]}
%!   fail ("attribute_profile (zeros (size{1}, 'uint8'), 'a', 1)", ...
%!         "out of memory or dimension too large for Octave's index type");
%!   assert (attribute_profile (I, 'a', 0), repmat (I, 1, 1, 3));
%! endfor

%!test <*a profile too large for the machine is an error>
%! fail ("attribute_profile (zeros (5000, 5000, 'uint8'), 'a', 1:1e7)", 'failed to allocate \d+ bytes of memory');
