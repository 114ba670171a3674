function [found, expected] = messages_of_faults ()
% Every error text of the module, each for all kinds of arrays that the hosts have: what is read, and what has to be.

% SPDX-License-Identifier: MIT

  I = uint8 (magic (4));
  classes = ['Data type not supported.' char(10) ' Please convert the input data to either one of the following ' ...
             'types: uint8, int8, uint16, int16, uint32, int32, uint64, int64.'];
  number = 'Wrong number of inputs.';
  numeric = 'Input 1 has to be a numeric 1D or 2D array.';
  flat = 'Input 1. Data with more than two dimensions are not supported.';
  string_or_empty = 'Input 5 has to be either a string or empty.';
  scalar_or_empty = 'Input 4 has to be either a scalar double or empty.';
  connectivity = 'This value of connectivity does not match any connectivity rule for 2d images.';
  row = 'Input 3 has to be a 1xN array of double.';
  rule = 'The filtering rule must be one of the following strings: ''min'', ''max'', ''direct'', ''sub''.';
  faults = {{I}, number; {I, 'a'}, number; {I, 'a', 3, 4, 'min', 6}, number;
            {I, 'a', 3, 4, 5}, string_or_empty; {I, 'a', 3, 4, {'min'}}, string_or_empty;
            {I, 'a', 3, [4 8]}, scalar_or_empty; {I, 'a', 3, '4'}, scalar_or_empty;
            {I, 'a', 3, single(4)}, scalar_or_empty; {I, 'a', 3, sparse(0)}, scalar_or_empty;
            {[], 'a', 3}, numeric; {{I}, 'a', 3}, numeric; {@sin, 'a', 3}, numeric; {'text', 'a', 3}, numeric;
            {cat(3, I, I), 'a', 3}, flat;
            {I, 5, 3}, 'Input 2 has to be a string.'; {I, '', 3}, 'Input 2 has to be a string.';
            {I, 'a', zeros(1, 0)}, 'Input 3 has not to be empty.';
            {I, 'a', 3, 6}, connectivity; {I, 'a', 3, 1e300}, connectivity; {I, 'a', 3, NaN}, connectivity;
            {I, ['ab'; 'cd'], 3}, 'Attribute not supported.'; {I, 'Area', 3}, 'Attribute not supported.';
            {I, 'a', 3, 4, 'Min'}, rule; {I, 's', 3, 8, 'none'}, rule;
            {zeros(32766, 1, 'uint8'), 'a', 1}, 'out of memory'; {zeros(2, 65536, 'int64'), 'a', 1}, 'out of memory'};
  for image = {single(I), I > 3, 1:5, eye(3), sparse(double (I)), sparse(I > 3)}
    faults(end+1,:) = {{image{1}, 'a', 3}, classes};
  end
  for thresholds = {single(3), int8(3), true, 'a', [1; 2], {3}, @sin, struct('a', 3), sparse(4), sparse(zeros (1, 100))}
    faults(end+1,:) = {{I, 'a', thresholds{1}}, row};
  end
  found = cellfun (@(inputs) message_of ('attribute_profile', inputs), faults(:,1), 'UniformOutput', false);
  expected = faults(:,2);
end
