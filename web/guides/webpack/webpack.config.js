export default {
  mode: 'production',
  entry: './src/index.js',
  output: { path: import.meta.dirname + '/public/build', publicPath: 'auto', clean: true },
};
